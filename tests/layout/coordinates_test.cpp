#include "tests/support/drawing.h"
#include "tests/support/layout_probe.h"

#include <gtest/gtest.h>

namespace {

using namespace nurvex7;
using namespace nurvex7::testing_support;

using point = tamsel7::point<double>;
using extent = tamsel7::size<double>;

TEST(CalculateXCoords, NodesStandInTheMiddleOfTheirColumn) {
    TestGraph g("a:100x20 b:60x20 c:11x20 a>d");
    LayoutProbe probe(g);
    probe.make();
    EXPECT_EQ(g.node("a").GetPosition(), (point{35, 12}));
    EXPECT_EQ(g.node("b").GetPosition(), (point{55, 44}));
    EXPECT_EQ(g.node("c").GetPosition(), (point{79.5, 76}));
    EXPECT_EQ(probe.column(1).x_end, 140);
    EXPECT_EQ(probe.column(2).x_start, 170);
    EXPECT_EQ(probe.result_size(), (extent{270, 108}));
}

TEST(CalculateXCoords, AnOwnerWithNothingToDrawKeepsItsMargins) {
    TestGraph g("a !a");
    g.make();
    EXPECT_EQ(g.root().GetSize(), (extent{30, 12}));
}

TEST(CalculateXCoords, TheTopmostNodeComesDownToNodeGapAndNoFurther) {
    TestGraph g("a b");
    LayoutProbe probe(g);
    probe.make_up_to("force_adjust");
    probe.set_ys(1, {-40, 0});
    probe.calculate_x_coords();
    EXPECT_EQ(probe.ys(1), (std::vector<double>{12, 52}));
    probe.set_ys(1, {40, 90});
    probe.calculate_x_coords();
    EXPECT_EQ(probe.ys(1), (std::vector<double>{40, 90})) << "a gap above stays";
}

// Deliberate: dummy nodes do not count for the height, even below everything else.
TEST(CalculateXCoords, DummiesBelowAllNodesStandOutsideTheHeight) {
    TestGraph g("a>b b>c a>c");
    LayoutProbe probe(g);
    probe.make_up_to("force_adjust");
    probe.set_ys(2, {500, 6});
    probe.calculate_x_coords();
    EXPECT_EQ(probe.result_size().height, 44);
}

// Deliberate: the bottom of one column goes on to the next; one of dummies only adds it again.
TEST(CalculateXCoords, TheLowestTrackDecidesTheHeight) {
    TestGraph g("a>a:7 a>b");
    LayoutProbe probe(g);
    probe.make();
    EXPECT_EQ(probe.result_size().height, 12 + 20 + 2 + 7 + 12);
}

// The nodes are 100 wide at first: columns from 30 to 140 and from 170 to 280.
TEST(CalculateXCoords, OldColumnsStayAsFarAsTheyCan) {
    struct {
        const char* shows;
        double first_width;  ///< of the node on level 1 at the next run
        double second_width; ///< and of that on level 2
        double x_start;      ///< of the column of level 2 afterwards
        double x_end;
    } const cases[] = {{"as it was", 100, 100, 170, 280},
                       {"wider than needed it is kept whole", 60, 60, 170, 280},
                       {"pushed right it keeps its end", 110, 60, 180, 280},
                       {"pushed right past its end", 180, 100, 250, 360},
                       {"grown it begins at the cursor", 60, 150, 170, 330},
                       {"grown and pushed right", 110, 150, 180, 340}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.shows);
        TestGraph g("a:100x20 b:100x20 a>b");
        LayoutProbe probe(g);
        probe.make();
        g.node_handler.sizes[g.node("a").GetID()] = {c.first_width, 20};
        g.node_handler.sizes[g.node("b").GetID()] = {c.second_width, 20};
        probe.update();
        EXPECT_EQ(probe.column(2).x_start, c.x_start);
        EXPECT_EQ(probe.column(2).x_end, c.x_end);
        const double middle = g.node("b").GetPosition().x + c.second_width / 2;
        EXPECT_EQ(middle, (c.x_start + c.x_end) / 2);
    }
}

} // namespace
