#include "nurvex7/model/moving.h"
#include "nurvex7/model/queries.h"
#include "tests/support/random_nest.h"
#include "tests/support/test_graph.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace nurvex7 {
namespace {

using testing_support::RandomNest;
using testing_support::TestGraph;
using point = tamsel7::point<double>;

// The plain form: each node of the walk asks the queries for itself.
void shift_plainly(Node node, point by) {
    const auto shift = [&](Node inner) { _shift_position(inner, by); };
    _shift(node, by);
    ForEachNodeIn(node, shift, false, false);
}

void unshift_plainly(Node node) {
    ForEachNodeIn(node, UnshiftWithEdges, true, false);
}

/// All places of a drawing, bends run by run, with the route of each edge. A run that nobody has
/// entered is as good as an empty one.
std::vector<double> places(const RandomNest& nest) {
    std::vector<double> all;
    const auto note = [&](const Node& node) {
        all.push_back(node.GetPosition().x);
        all.push_back(node.GetPosition().y);
    };
    for (const Node& node : nest.nodes) {
        note(node);
    }
    std::vector<Node> owners(nest.nodes);
    owners.push_back(nest.graph->GetRoot());
    for (const Edge& edge : nest.edges) {
        NodeSet route = edge.GetBreakNodes();
        all.push_back(route.GetCount());
        for (int i = 0; i < route.GetCount(); ++i) {
            note(route.GetItem(i));
        }
        for (const Node& owner : owners) {
            const graph_ptr<node_impl_set> run = edge.FindBreakNodesIn(owner);
            const int count = run.get() != nullptr ? run->GetCount() : 0;
            all.push_back(count);
            for (int i = 0; i < count; ++i) {
                note(Node(edge.get_vis(), run->GetItem(i)));
            }
        }
    }
    return all;
}

TEST(ShiftPosition, AgreesWithThePlainFormToTheLastBit) {
    for (unsigned seed = 0; seed < 400; ++seed) {
        SCOPED_TRACE(seed);
        RandomNest nest(seed);
        RandomNest plain(seed);
        const bool whole = seed % 5 < 3;
        const std::size_t top = nest.nodes.empty() ? 0 : seed % nest.nodes.size();
        if (!whole && nest.nodes.empty()) {
            continue;
        }
        const Node nest_top = whole ? nest.graph->GetRoot() : nest.nodes[top];
        const Node plain_top = whole ? plain.graph->GetRoot() : plain.nodes[top];
        const point at = nest_top.GetPosition();
        // The last of these leaves what the top owns where it stands.
        const point by =
            std::array{point{}, point{1.0 / 3, -7.1}, point{-at.x / 2, -at.y / 2}}[seed % 3];
        if (seed % 4 != 0) {
            UnshiftPosition(nest_top);
            unshift_plainly(plain_top);
            ASSERT_EQ(places(nest), places(plain));
        }
        ShiftPosition(nest_top, by);
        shift_plainly(plain_top, by);
        ASSERT_EQ(places(nest), places(plain));
    }
}

// A cluster at (100, 50), its child at (10, 10) in it, a grandchild at (1, 1) in that.
TEST(ShiftPosition, GoesBackAfterNothingAndIsDoneOncePerLevelOtherwise) {
    const TestGraph g("C/D/a b");
    Node cluster = g.node("C");
    Node child = g.node("D");
    Node grandchild = g.node("a");
    cluster.SetPosition(100, 50);
    child.SetPosition(10, 10);
    grandchild.SetPosition(1, 1);
    ShiftPosition(cluster, 0, 0);
    EXPECT_EQ(cluster.GetPosition(), (point{100, 50}));
    EXPECT_EQ(child.GetPosition(), (point{110, 60}));
    EXPECT_EQ(grandchild.GetPosition(), (point{111, 61}));
    UnshiftPosition(cluster);
    EXPECT_EQ(child.GetPosition(), (point{10, 10}));
    EXPECT_EQ(grandchild.GetPosition(), (point{1, 1}));
    // Deliberate: the inside gets the shift from its owner's new place and once more by itself.
    ShiftPosition(cluster, 5, 0);
    EXPECT_EQ(cluster.GetPosition(), (point{105, 50}));
    EXPECT_EQ(child.GetPosition(), (point{120, 60}));
    EXPECT_EQ(grandchild.GetPosition(), (point{126, 61}));
}

TEST(ShiftWithEdges, TheRootMovesAgainstNothing) {
    const TestGraph g("a");
    UnshiftWithEdges(g.root());
    _shift_position(g.root(), {1, 2});
    EXPECT_EQ(g.root().GetPosition(), (point{1, 2}));
}

TEST(MoveNode, TakesTheNearEndsOfItsEdgesAlongAndNothingElse) {
    TestGraph g("C/i C>b a>C");
    Node cluster = g.node("C");
    cluster.SetSize({30, 10});
    for (const char* caption : {"C>b", "a>C"}) {
        g.edge(caption).AddBreakNodesIn(g.root(), 2);
    }
    MoveNode(cluster, 100, 200);
    EXPECT_EQ(cluster.GetPosition(), (point{100, 200}));
    EXPECT_EQ(g.edge("C>b").GetBreakNodes().GetItem(0).GetPosition(), (point{130, 205}));
    EXPECT_EQ(g.edge("C>b").GetBreakNodes().GetItem(1).GetPosition(), (point{0, 0}));
    EXPECT_EQ(g.edge("a>C").GetBreakNodes().GetItem(0).GetPosition(), (point{0, 0}));
    EXPECT_EQ(g.edge("a>C").GetBreakNodes().GetItem(1).GetPosition(), (point{100, 205}));
    EXPECT_EQ(g.node("i").GetPosition(), (point{0, 0}));
}

TEST(MoveNode, SetsBothEndsOfAnEdgeToItselfAndBearsEdgesWithoutBends) {
    TestGraph g("a>a a>b");
    Edge loop = g.edge("a>a");
    loop.AddBreakNodesIn(g.root(), 3);
    Node a = g.node("a");
    a.SetSize({20, 4});
    MoveNode(a, 1, 2);
    EXPECT_EQ(loop.GetBreakNodes().GetItem(0).GetPosition(), (point{21, 4}));
    EXPECT_EQ(loop.GetBreakNodes().GetItem(2).GetPosition(), (point{1, 4}));
}

} // namespace
} // namespace nurvex7
