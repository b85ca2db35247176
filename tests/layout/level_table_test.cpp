#include "tests/support/drawing.h"
#include "tests/support/layout_probe.h"
#include "tests/support/plain_queries.h"

#include <gtest/gtest.h>

namespace {

using namespace nurvex7;
using namespace nurvex7::testing_support;

TEST(LevelTable, IsMemoryWithALength) {
    LevelTable table;
    table.resize(4);
    table.set(1, Level{1, 2, 1});
    table.set(3, Level{3, 5, 2});
    table.resize(2);
    EXPECT_EQ(table.get(3).width, 2) << "shortening forgets nothing";
    table.forget_length();
    EXPECT_EQ(table.get(1).width, 1);
    table.resize(3);
    EXPECT_EQ(table.get(1).width, 0) << "lengthening writes zeros from the old length on";
    EXPECT_EQ(table.get(3).width, 2) << "and no further than the new length";
    EXPECT_EQ(table.get(77).x_end, 0) << "beyond all memory";
}

TEST(PlaceNewNodes, AFreshDrawingTakesTheNodesInSetOrder) {
    TestGraph g("d c b a c>x");
    LayoutProbe probe(g);
    probe.make_up_to("place_nodes_on_levels");
    EXPECT_EQ(probe.levels(), "d c b a | x");
}

TEST(ShiftOldLevels, ALevelBeforeTheFirstRaisesAllAndForgetsTheColumns) {
    TestGraph g("b>c:1 h b>d !h");
    LayoutProbe probe(g);
    probe.make();
    EXPECT_GT(probe.column(1).width, 0);
    g.add("a>b");
    probe.update_up_to("place_nodes_on_levels");
    EXPECT_EQ(probe.levels(/*with_ports=*/true), "- | a | b | c d | -");
    EXPECT_EQ(probe.level_of("h"), 2) << "hidden nodes too";
    for (std::size_t k = 0; k < 5; ++k) {
        EXPECT_EQ(probe.column(k).width, 0) << k;
    }
}

TEST(ShiftOldLevels, ALevelBeforeTheFirstKeepsTheColumnsOfTheNextUpdate) {
    TestGraph g("b>c");
    LayoutProbe probe(g);
    probe.make();
    g.add("a>b");
    probe.update();
    EXPECT_EQ(probe.column(3).x_start, 230);
}

// Levels are opened at the far end only for nodes that will stand there: a is the only node beside
// c, and hidden.
TEST(ShiftOldLevels, OpensNoLevelForAHiddenNode) {
    TestGraph g("a>b a>c !a");
    g.node("b").Remove();
    LayoutProbe probe(g);
    probe.make_up_to("place_nodes_on_levels");
    EXPECT_EQ(probe.levels(/*with_ports=*/true), "- | c | -");
}

TEST(MarkOld, KnowsEdgesBetweenVisibleOwnedNodesOnly) {
    TestGraph g("C/x>C/y C/y>C/h !h a>x y>a");
    LayoutProbe probe(g);
    probe.make_up_to("make_epilogue", g.node("C"));
    EXPECT_TRUE(probe.info(g.edge("x>y")).is_old);
    EXPECT_FALSE(probe.info(g.edge("y>h")).is_old) << "one end is hidden";
    EXPECT_FALSE(probe.info(g.edge("a>x")).is_old) << "it crosses the border";
    EXPECT_FALSE(probe.info(g.edge("y>a")).is_old) << "it crosses the border";
    EXPECT_TRUE(probe.info(g.node("h")).is_old);
    EXPECT_TRUE(probe.info(g.node("h")).was_hidden);
    const Node bend = g.edge("x>y").GetBreakNodesIn(g.node("C")).GetItem(0);
    EXPECT_TRUE(probe.info(bend).is_old);
    const Node port = g.edge("a>x").GetBreakNodesIn(g.node("C")).GetItem(0);
    EXPECT_FALSE(probe.info(port).is_old);
}

TEST(MarkOld, AnEdgeWhoseEndComesBackIsRoutedAnew) {
    TestGraph g("a>b b>c !b");
    LayoutProbe probe(g);
    probe.make();
    Show(g.node("b"));
    probe.update();
    EXPECT_EQ(g.edge("a>b").GetBreakNodes().GetCount(), 4);
    EXPECT_TRUE(probe.info(g.edge("a>b")).is_old);
}

// Resize places nothing, and yet marks every node as old: one added since comes out of it as old,
// on no level.
TEST(MarkOld, ANodeThatMeetsAResizeFirstIsPlacedByTheNextUpdate) {
    TestGraph g("a>b");
    LayoutProbe probe(g);
    probe.make();
    g.add("c b>d");
    for (int i = 0; i < 2; ++i) {
        probe.resize_up_to("resize_epilogue");
        EXPECT_EQ(probe.levels(), "a | b");
    }
    EXPECT_EQ(g.edge("b>d").GetBreakNodes().GetCount(), 0);
    probe.update();
    EXPECT_EQ(probe.levels(), "a c | b | d");
    EXPECT_EQ(g.edge("b>d").GetBreakNodes().GetCount(), 4) << "its edge gets a route with it";
}

} // namespace
