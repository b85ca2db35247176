#include "nurvex7/model/folding.h"
#include "tests/support/drawing.h"
#include "tests/support/golden.h"
#include "tests/support/layout_probe.h"

#include <gtest/gtest.h>

namespace {

using namespace nurvex7;
using namespace nurvex7::testing_support;

class Routes : public testing::TestWithParam<const char*> {};

TEST_P(Routes, AsDrawn) {
    const Golden golden = read_golden(GetParam());
    TestGraph g(golden.graph);
    g.make();
    for (const std::string& words : golden.updates) {
        g.add(words);
        g.update(g.root());
    }
    EXPECT_EQ(drawing_text(g), golden.drawing);
}

INSTANTIATE_TEST_SUITE_P(Golden, Routes,
                         testing::Values("one_edge", "long_edge", "reversed_edge",
                                         "long_reversed_edge", "two_reversed_edges", "self_loop",
                                         "flat_edges", "through_a_cluster", "new_edge_below_a_row",
                                         "new_edge_through_a_gap", "new_first_level",
                                         "new_node_between_levels"),
                         [](const auto& row) { return std::string(row.param); });

tamsel7::point<double> bend(const Edge& edge, const Node& owner, int index) {
    NodeSet bends = edge.GetBreakNodesIn(owner);
    return bends.GetItem(index < 0 ? bends.GetCount() + index : index).GetPosition();
}

// A list can be shorter than the kind of its edge says: b moved in beside a while it was hidden, so
// that b>a runs backwards now and still has the list of an edge across the border. A Resize that
// finds b shown places the bends that are there and passes the others over.
TEST(Tracks, OfAShortListPlaceTheBendsThatAreThere) {
    TestGraph g("C/a a>b b>a");
    g.make();
    g.node("b").SetOwner(g.node("C"));
    Hide(g.node("b"));
    g.node("C").MakeLayout();
    g.recalculate();
    Show(g.node("b"));
    g.resize(g.node("C"));
    const Edge edge = g.edge("b>a");
    ASSERT_EQ(edge.GetBreakNodesIn(g.node("C")).GetCount(), 3);
    const tamsel7::point<double> a = g.node("a").GetPosition();
    EXPECT_EQ(bend(edge, g.node("C"), 0), (tamsel7::point<double>{a.x - 5, a.y + 22}));
    EXPECT_EQ(bend(edge, g.node("C"), 2), (tamsel7::point<double>{a.x, a.y + 10}));
}

} // namespace
