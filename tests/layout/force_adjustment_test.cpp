#include "tests/support/layout_probe.h"
#include "tests/support/random_graph.h"
#include "tests/support/scenario.h"

#include <gtest/gtest.h>

#include <cfloat>

namespace {

using namespace nurvex7;
using namespace nurvex7::testing_support;

using ys_t = std::vector<double>;

constexpr double FAR = DBL_MAX;

/// Pairs p0>n0 p1>n1 ...: the force on a node is the y of its p less its own. A node whose p stands
/// at FAR has none, and is free.
struct BlockCase {
    std::string shows;
    ys_t parents;
    ys_t before;
    ys_t after;
    double lower = -FAR;
    double upper = FAR;
};

void PrintTo(const BlockCase& c, std::ostream* out) {
    *out << c.shows;
}

class Blocks : public testing::TestWithParam<BlockCase> {};

TEST_P(Blocks, OfRealNodes) {
    const BlockCase& c = GetParam();
    // Every n leads on to z, so that a free one does not stand on level 1.
    TestGraph g;
    for (std::size_t i = 0; i < c.before.size(); ++i) {
        const std::string number = std::to_string(i);
        g.add("p" + number + " n" + number);
        g.add(c.parents[i] != FAR ? "p" + number + ">n" + number : "");
    }
    g.add("a>b b>z");
    for (std::size_t i = 0; i < c.before.size(); ++i) {
        g.add("n" + std::to_string(i) + ">z");
    }
    LayoutProbe probe(g);
    probe.make_up_to("place_nodes_on_levels");
    for (std::size_t i = 0; i < c.before.size(); ++i) {
        g.node("p" + std::to_string(i)).SetPosition(0, c.parents[i]);
    }
    std::vector<Node>& level = probe.level_nodes()[2];
    std::erase_if(level, [](const Node& n) { return n.GetCaption() == "b"; });
    probe.set_ys(2, c.before);
    probe.force_adjust_block(2, DEPEND_ON_IN, /*with_dummies=*/false, c.lower, c.upper);
    const ys_t moved = probe.ys(2);
    ASSERT_EQ(moved.size(), c.after.size());
    for (std::size_t i = 0; i < moved.size(); ++i) {
        EXPECT_DOUBLE_EQ(moved[i], c.after[i]) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(
    ForceAdjustBlock, Blocks,
    testing::Values(
        BlockCase{"pushing against each other they stay", {10, 22}, {0, 32}, {0, 32}},
        BlockCase{"pulled apart they part", {-10, 42}, {0, 32}, {-10, 42}},
        BlockCase{"falling forces move by their mean",
                  {10, 37, 65},
                  {0, 32, 64},
                  {16 / 3.0, 32 + 16 / 3.0, 64 + 16 / 3.0}},
        BlockCase{"equal forces stay in one block", {4, 36}, {0, 32}, {4, 36}},
        BlockCase{"a block never shifts by less than the one above",
                  {5, 46, 60},
                  {0, 40, 80},
                  {5, 45, 85}},
        BlockCase{"a free node is carried by the block that it stands in",
                  {5, FAR, 90},
                  {0, 40, 80},
                  {5, 45, 90}},
        BlockCase{
            "a free node on top is carried by the block below it", {FAR, 33}, {0, 40}, {-7, 33}},
        BlockCase{"where all are free nothing moves", {FAR, FAR}, {0, 40}, {0, 40}, 10},
        BlockCase{"the lower bound holds the first block", {-10, 32}, {0, 32}, {-4, 32}, -4},
        BlockCase{"a block of one moves to the lower bound", {-10}, {0}, {3}, 3},
        BlockCase{
            "the upper bound pushes up what lies above it", {40, 72}, {0, 32}, {8, 40}, -FAR, 66},
        BlockCase{"and wins over the lower", {0, 32}, {0, 32}, {-9, 23}, -4, 49},
        BlockCase{"it stops where there is room", {0, 80}, {0, 80}, {0, 74}, -FAR, 100},
        BlockCase{"an empty run", {}, {}, {}}),
    RowName());

TEST(ForceAdjustBlock, RealNodesFeelNoDummies) {
    TestGraph g("a>c a>b b>c");
    LayoutProbe probe(g);
    probe.make_up_to("calculate_initial_y_coords");
    ASSERT_EQ(probe.levels(), "a | a>c b | c");
    probe.set_ys(2, {-500, 40});
    probe.force_adjust_block(3, DEPEND_ON_IN, false, -FAR, FAR);
    EXPECT_EQ(probe.ys(3), ys_t{40});
}

TEST(ForceAdjustBlock, DummiesFeelAll) {
    TestGraph g("a>d a>b b>c c>d");
    LayoutProbe probe(g);
    probe.make_up_to("calculate_initial_y_coords");
    ASSERT_EQ(probe.levels(), "a | a>d b | a>d c | d");
    probe.set_ys(2, {-5, 40});
    probe.set_ys(3, {10, 40});
    // Of the two on level 3 only the dummy has a way to go: to the dummy at -5 before it.
    probe.force_adjust_block(3, DEPEND_ON_IN, true, -FAR, FAR);
    EXPECT_EQ(probe.ys(3), (ys_t{-5, 40}));
}

TEST(ForceAdjustBlock, ARunOfDummiesOnlyMovesNothingWithoutDummies) {
    TestGraph g("a>b b>c a>c !b");
    LayoutProbe probe(g);
    probe.make_up_to("calculate_initial_y_coords");
    ASSERT_EQ(probe.levels(), "a | a>c | c");
    probe.force_adjust_block(2, DEPEND_ON_IN, false, 70, 80);
    EXPECT_EQ(probe.ys(2).front(), 1);
}

TEST(ForceAdjustBlock, ParallelEdgesPullOnceEach) {
    TestGraph g("p q n p>n p>n q>n");
    LayoutProbe probe(g);
    probe.make_up_to("calculate_initial_y_coords");
    probe.set_ys(1, {0, 30});
    probe.set_ys(2, {0});
    probe.force_adjust_block(2, DEPEND_ON_IN, false, -FAR, FAR);
    EXPECT_EQ(probe.ys(2), ys_t{10});
}

// A cluster pulls from where the edge leaves it, not from its centre.
TEST(ForceAdjustBlock, AnEdgePullsFromThePortOfACluster) {
    TestGraph g("C/w C/x:60x100 x>n");
    LayoutProbe probe(g);
    probe.make_up_to("calculate_initial_y_coords");
    const NodeSet inner = g.edge("x>n").GetBreakNodesIn(g.node("C"));
    const double exit = NodeSet(inner).GetItem(inner.GetCount() - 1).GetPosition().y;
    EXPECT_NE(exit, g.node("C").GetSize().height / 2);
    probe.force_adjust_block(2, DEPEND_ON_IN, false, -FAR, FAR);
    EXPECT_EQ(probe.ys(2), ys_t{6 + exit - 10});
}

TEST(ForceAdjust, TheBackwardSweepIsSwitched) {
    for (const bool use : {false, true}) {
        TestGraph g("a>c b>d c:60x100");
        LayoutProbe probe(g);
        LayoutProbe::set_switches(probe.get_layout(), use, /*keep_hidden=*/true);
        probe.make_up_to("force_adjust");
        // Forces of -40 and -80 move c and d together by -60; back then a goes up, b down by 20.
        EXPECT_EQ(probe.ys(2), (ys_t{-54, 58}));
        EXPECT_EQ(probe.ys(1), use ? (ys_t{-14, 58}) : (ys_t{6, 38}));
    }
}

TEST(ForceAdjust, ADummyStaysBetweenTheRealNodesAroundIt) {
    TestGraph g("a>c a>b b>c");
    LayoutProbe probe(g);
    probe.make_up_to("force_adjust");
    // c pulls the dummy down to 16; the node below it pushes it up again.
    EXPECT_EQ(probe.ys(2), (ys_t{-2, 6}));
}

TEST(ForceAdjust, NeverReordersALevel) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        TestGraph g;
        grow(g, seed, shape_of_seed(seed, 40));
        LayoutProbe probe(g);
        probe.make_up_to("calculate_initial_y_coords");
        const std::vector<std::vector<Node>> before = probe.level_nodes();
        probe.force_adjust();
        EXPECT_EQ(probe.level_nodes(), before);
        for (std::size_t k = 1; k + 1 < before.size(); ++k) {
            const ys_t ys = probe.ys(k);
            EXPECT_TRUE(std::is_sorted(ys.begin(), ys.end())) << "level " << k;
        }
    }
}

} // namespace
