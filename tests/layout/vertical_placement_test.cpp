#include "tests/support/layout_probe.h"
#include "tests/support/scenario.h"

#include <gtest/gtest.h>

namespace {

using namespace nurvex7;
using namespace nurvex7::testing_support;

using ys_t = std::vector<double>;

TEST(InitialYCoords, RealNodesStandNodeGapApart) {
    TestGraph g("a:60x20 b:60x30 c");
    LayoutProbe probe(g);
    probe.make_up_to("calculate_initial_y_coords");
    EXPECT_EQ(probe.ys(1), (ys_t{6, 38, 80}));
}

TEST(InitialYCoords, DummiesStandEdgeGapApartAndMixedInBetween) {
    TestGraph g("a>c:3 a>c:5 a>b b>c");
    LayoutProbe probe(g);
    probe.make_up_to("calculate_initial_y_coords");
    EXPECT_EQ(probe.levels(), "a | a>c a>c b | c");
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

struct HeightCase {
    std::string shows;
    std::string words;
    double height;
};

void PrintTo(const HeightCase& c, std::ostream* out) {
    *out << c.shows << ": " << c.words;
}

class Heights : public testing::TestWithParam<HeightCase> {};

TEST_P(Heights, OfNodeA) {
    TestGraph g(GetParam().words);
    LayoutProbe probe(g);
    probe.make();
    EXPECT_EQ(probe.height("a"), GetParam().height);
}

INSTANTIATE_TEST_SUITE_P(
    Make, Heights,
    testing::Values(HeightCase{"no tracks", "a>b", 20}, HeightCase{"a loop", "a>a", 23},
                    HeightCase{"two reversed edges", "a>b b>a b>a", 26},
                    HeightCase{"all tracks as wide as the first edge in", "a>b b>a:4 b>a:1", 32},
                    HeightCase{"and not as an edge out", "a>b:9 b>a:4", 26}),
    RowName());

// The edges of the tracks can be gone by the time of a Resize, which reads the counts of the run
// before.
TEST(Heights, CountsLeftOverWithoutAnEdgeTakeNoRoom) {
    TestGraph g("a>a");
    LayoutProbe probe(g);
    probe.make();
    g.edge("a>a").Remove();
    EXPECT_EQ(probe.height("a"), 20);
}

/// Two levels of three nodes, a b c before d e f, all 20 high.
struct TwoLevels {
    TwoLevels() : g("a b c d e f a>d b>e c>f"), probe(g) { probe.make(); }

    void shift(const ys_t& first, const ys_t& second) {
        probe.set_ys(1, first);
        probe.set_ys(2, second);
        probe.make_y_shifts();
    }

    TestGraph g;
    LayoutProbe probe;
};

TEST(MakeYShifts, AConflictPushesWhatLiesBelowItOnAllLevels) {
    TwoLevels levels;
    levels.shift({0, 20, 100}, {-11, 10, 40});
    EXPECT_EQ(levels.probe.ys(1), (ys_t{0, 21, 101}));
    EXPECT_EQ(levels.probe.ys(2), (ys_t{-11, 11, 41})) << "a centre right at the key moves too";
}

TEST(MakeYShifts, AConflictIsMeasuredWithHalfOfTheSmallerGap) {
    TwoLevels levels;
    levels.shift({0, 21, 42}, {0, 21, 42});
    EXPECT_EQ(levels.probe.ys(1), (ys_t{0, 21, 42})) << "1 is room enough between nodes of 20";
}

TEST(MakeYShifts, ConflictsAddUpDownwards) {
    TwoLevels levels;
    levels.shift({22, 40, 200}, {79, 98, 110});
    // Of 3 at 40, and on the other level of 2 at 98 and of 9 at 110.
    EXPECT_EQ(levels.probe.ys(1), (ys_t{22, 43, 214}));
    EXPECT_EQ(levels.probe.ys(2), (ys_t{82, 103, 124}));
}

TEST(MakeYShifts, OfTwoConflictsAtOneKeyTheLargerCounts) {
    TwoLevels levels;
    levels.shift({20, 40, 200}, {23, 40, 300});
    EXPECT_EQ(levels.probe.ys(1), (ys_t{20, 44, 204}));
    EXPECT_EQ(levels.probe.ys(2), (ys_t{23, 44, 304}));
}

TEST(MakeYShifts, NothingMovesWithoutAConflict) {
    TwoLevels levels;
    levels.shift({0, 50, 90}, {-100, 0, 300});
    EXPECT_EQ(levels.probe.ys(1), (ys_t{0, 50, 90}));
    EXPECT_EQ(levels.probe.ys(2), (ys_t{-100, 0, 300}));
}

} // namespace
