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

// Levels are opened at the far end only for nodes that will stand there: a is the only node beside
// c, and hidden.
TEST(ShiftOldLevels, OpensNoLevelForAHiddenNode) {
    TestGraph g("a>b a>c !a");
    g.node("b").Remove();
    LayoutProbe probe(g);
    probe.make_up_to("place_nodes_on_levels");
    EXPECT_EQ(probe.levels(/*with_ports=*/true), "- | c | -");
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
