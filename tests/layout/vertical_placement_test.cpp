#include "tests/support/layout_probe.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

using namespace nurvex7;
using namespace nurvex7::testing_support;

using ys_t = std::vector<double>;

TEST(InitialYCoords, NodesAndDummiesStandTheirGapsApart) {
    TestGraph g("a:60x20 x:60x30 y a>c:3 a>c:5 a>b b>c");
    LayoutProbe probe(g);
    probe.make_up_to("calculate_initial_y_coords");
    EXPECT_EQ(probe.levels(), "a x y | a>c a>c b | c");
    EXPECT_EQ(probe.ys(1), (ys_t{6, 38, 80}));
    EXPECT_EQ(probe.ys(2), (ys_t{1, 1 + 3 + 2, 6 + 5 + 7}));
}

TEST(InitialYCoords, LeavesThePortsAlone) {
    TestGraph g("C/x>a");
    LayoutProbe probe(g);
    probe.make_up_to("barycentric_adjust", g.node("C"));
    const double before = probe.ys(2).front();
    probe.calculate_initial_y_coords();
    EXPECT_EQ(probe.ys(2).front(), before);
}

TEST(Heights, CountTheTracksUnderANode) {
    struct {
        const char* words;
        double height; ///< of a
    } const cases[] = {
        {"a>b", 20},         {"a>a", 23},
        {"a>b b>a b>a", 26}, {"a>b b>a:4 b>a:1", 32}, // all as wide as the first edge in
        {"a>b:9 b>a:4", 26},                          // and not as an edge out
    };
    for (const auto& c : cases) {
        TestGraph g(c.words);
        LayoutProbe probe(g);
        probe.make();
        EXPECT_EQ(probe.height("a"), c.height) << c.words;
    }
}

// The edges of the tracks can be gone by the time of a Resize, which reads the counts of the run
// before.
TEST(Heights, CountsLeftOverWithoutAnEdgeTakeNoRoom) {
    TestGraph g("a>a");
    LayoutProbe probe(g);
    probe.make();
    g.edge("a>a").Remove();
    EXPECT_EQ(probe.height("a"), 20);
}

/// What makes room of two levels of three nodes, all 20 high and with 2 between lines.
std::pair<ys_t, ys_t> shifted(const ys_t& first, const ys_t& second) {
    TestGraph g("a b c d e f a>d b>e c>f");
    LayoutProbe probe(g);
    probe.make();
    probe.set_ys(1, first);
    probe.set_ys(2, second);
    probe.make_y_shifts();
    return {probe.ys(1), probe.ys(2)};
}

// Where one stands closer to the next than 1, all that lies below gives way, on both levels.
TEST(MakeYShifts, AConflictPushesWhatLiesBelowItOnAllLevels) {
    using two_t = std::pair<ys_t, ys_t>;
    EXPECT_EQ(shifted({0, 20, 100}, {-11, 10, 40}), two_t({0, 21, 101}, {-11, 11, 41}))
        << "a centre right at the key moves too";
    EXPECT_EQ(shifted({0, 21, 42}, {0, 21, 42}), two_t({0, 21, 42}, {0, 21, 42}))
        << "half of the smaller gap is room enough";
    EXPECT_EQ(shifted({22, 40, 200}, {79, 98, 110}), two_t({22, 43, 214}, {82, 103, 124}))
        << "conflicts add up: 3 at 40, 2 at 98, 9 at 110";
    EXPECT_EQ(shifted({20, 40, 200}, {23, 40, 300}), two_t({20, 44, 204}, {23, 44, 304}))
        << "of two at one key the larger counts";
}

} // namespace
