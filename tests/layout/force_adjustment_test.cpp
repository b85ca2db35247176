#include "tests/support/layout_probe.h"

#include <gtest/gtest.h>

#include <cfloat>

namespace {

using namespace nurvex7;
using namespace nurvex7::testing_support;

using ys_t = std::vector<double>;

constexpr double FAR = DBL_MAX;

// Pairs p0>n0 p1>n1 ...: the force on a node is the y of its p less its own. A node whose p stands
// at FAR has none, and is free. Every n leads on to z, so that a free one is not on level 1.
ys_t moved_block(const ys_t& parents, const ys_t& before, double lower, double upper) {
    TestGraph g;
    for (std::size_t i = 0; i < before.size(); ++i) {
        const std::string number = std::to_string(i);
        g.add("p" + number + " n" + number);
        g.add(parents[i] != FAR ? "p" + number + ">n" + number : "");
    }
    g.add("a>b b>z");
    for (std::size_t i = 0; i < before.size(); ++i) {
        g.add("n" + std::to_string(i) + ">z");
    }
    LayoutProbe probe(g);
    probe.make_up_to("place_nodes_on_levels");
    for (std::size_t i = 0; i < before.size(); ++i) {
        g.node("p" + std::to_string(i)).SetPosition(0, parents[i]);
    }
    std::erase_if(probe.level_nodes()[2], [](const Node& n) { return n.GetCaption() == "b"; });
    probe.set_ys(2, before);
    probe.force_adjust_block(2, DEPEND_ON_IN, /*with_dummies=*/false, lower, upper);
    return probe.ys(2);
}

TEST(ForceAdjustBlock, MovesRealNodesInBlocks) {
    const double third = 16 / 3.0;
    struct {
        const char* shows;
        ys_t parents;
        ys_t before;
        ys_t after;
        double lower = -FAR;
        double upper = FAR;
    } const cases[] = {
        {"pushing against each other they stay", {10, 22}, {0, 32}, {0, 32}},
        {"pulled apart they part", {-10, 42}, {0, 32}, {-10, 42}},
        {"falling forces move by their mean",
         {10, 37, 65},
         {0, 32, 64},
         {third, 32 + third, 64 + third}},
        {"equal forces stay in one block", {4, 36}, {0, 32}, {4, 36}},
        {"a block never shifts by less than the one above", {5, 46, 60}, {0, 40, 80}, {5, 45, 85}},
        {"a free node is carried by its block", {5, FAR, 90}, {0, 40, 80}, {5, 45, 90}},
        {"a free node on top by the block below it", {FAR, 33}, {0, 40}, {-7, 33}},
        {"where all are free nothing moves", {FAR, FAR}, {0, 40}, {0, 40}, 10},
        {"the lower bound holds the first block", {-10, 32}, {0, 32}, {-4, 32}, -4},
        {"a block of one moves to the lower bound", {-10}, {0}, {3}, 3},
        {"the upper bound pushes up what lies above", {40, 72}, {0, 32}, {8, 40}, -FAR, 66},
        {"and wins over the lower", {0, 32}, {0, 32}, {-9, 23}, -4, 49},
        {"it stops where there is room", {0, 80}, {0, 80}, {0, 74}, -FAR, 100},
        {"an empty run", {}, {}, {}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.shows);
        const ys_t moved = moved_block(c.parents, c.before, c.lower, c.upper);
        ASSERT_EQ(moved.size(), c.after.size());
        for (std::size_t i = 0; i < moved.size(); ++i) {
            EXPECT_DOUBLE_EQ(moved[i], c.after[i]) << i;
        }
    }
}

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

TEST(ForceAdjust, ADummyStaysBetweenTheRealNodesAroundIt) {
    TestGraph g("a>c a>b b>c");
    LayoutProbe probe(g);
    probe.make_up_to("force_adjust");
    // c pulls the dummy down to 16; the node below it pushes it up again.
    EXPECT_EQ(probe.ys(2), (ys_t{-2, 6}));
}

} // namespace
