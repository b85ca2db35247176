#include "nurvex7/model/queries.h"
#include "tests/support/random_nest.h"
#include "tests/support/test_graph.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace nurvex7 {
namespace {

using testing_support::TestGraph;
using pair_set = graph_ptr2<IGraphSet<NodeEdgePair>>;

/// Pairs as `sibling:edge`, with the root as a star.
std::string text_of(const pair_set& pairs) {
    std::string text;
    for (int i = 0; i < pairs->GetCount(); ++i) {
        const NodeEdgePair pair = pairs->GetItem(i);
        text += (i == 0 ? "" : " ") + (IsRoot(pair.node) ? "*" : pair.node.GetCaption()) + ":" +
                pair.edge.GetCaption();
    }
    return text;
}

TEST(Neighbours, AreThoseOfTheWholeInside) {
    struct {
        const char* shows;
        const char* words; ///< as TestGraph reads them
        const char* node;
        const char *children, *parents, *edges_out, *edges_in;
    } const cases[] = {
        {"top level", "a>b c>a", "a", "b:a>b", "c:c>a", "", ""},
        {"sorted by sibling, then by edge", "a y z a>z a>y a>z", "a", "y:a>y z:a>z z:a>z", "", "",
         ""},
        {"two edges from a cluster to one sibling", "C/a>d C/b>d", "C", "d:a>d d:b>d", "", "", ""},
        {"an edge inside a cluster, from outside", "C/a>C/b", "C", "", "", "", ""},
        {"an edge inside a cluster, from its source", "C/a>C/b", "a", "b:a>b", "", "", ""},
        {"an edge to itself", "a>a", "a", "a:a>a", "a:a>a", "", ""},
        {"an edge of an inner node to itself", "C/a>C/a", "C", "", "", "", ""},
        {"an edge to the owner itself", "C/a>C", "a", "", "", "C:a>C", ""},
        {"an edge from the owner itself", "C>C/a", "a", "", "", "", "C:C>a"},
        {"an owner and its inside, from the owner", "C/a>C C>C/a", "C", "", "", "", ""},
        {"out of a cluster", "C/a>d", "a", "", "", "*:a>d", ""},
        {"across two nests, at the top", "C/D/a>E/b", "C", "E:a>b", "", "", ""},
        {"across two nests, at the target", "C/D/a>E/b", "E", "", "C:a>b", "", ""},
        {"across two nests, half way", "C/D/a>E/b", "D", "", "", "*:a>b", ""},
        {"across two nests, inside the target", "C/D/a>E/b", "b", "", "", "", "*:a>b"},
        {"past the owner to the one above", "C/D/a>C", "a", "", "", "*:a>C", ""},
        {"past the owner, at the owner", "C/D/a>C", "D", "", "", "C:a>C", ""},
        {"hidden nodes count", "a>b !a !b", "a", "b:a>b", "", "", ""}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.shows);
        const TestGraph g(c.words);
        const Node node = g.node(c.node);
        EXPECT_EQ(text_of(GetChildrenEx(node)), c.children);
        EXPECT_EQ(text_of(GetParentsEx(node)), c.parents);
        EXPECT_EQ(text_of(GetEdgesOutEx(node)), c.edges_out);
        EXPECT_EQ(text_of(GetEdgesInEx(node)), c.edges_in);
    }
}

TEST(Neighbours, TheRootAndWhatHangsInTheAirHaveNone) {
    TestGraph g("a>b C/c>b");
    EXPECT_EQ(GetChildrenEx(g.root())->GetCount(), 0);
    const Node a = g.node("a");
    Node b = g.node("b");
    b.Remove();
    EXPECT_EQ(text_of(GetChildrenEx(a)), "");
    EXPECT_EQ(text_of(GetChildrenEx(b)), "");
}

TEST(Neighbours, ANodeThatOwnsItselfIsPassedOver) {
    TestGraph g("a>X X>a X/x>a D/d>X");
    Node own = g.node("X");
    own.SetOwner(own);
    EXPECT_EQ(text_of(GetChildrenEx(g.node("a"))), "");
    EXPECT_EQ(text_of(GetParentsEx(g.node("a"))), "");
    EXPECT_EQ(text_of(GetEdgesOutEx(g.node("d"))), "");
    EXPECT_EQ(text_of(GetChildrenEx(own)), "");
    EXPECT_EQ(GetRoot(own), own);
    EXPECT_FALSE(NodeByOwnershipComparator(own, own));
    own.Remove();
}

bool is_inside(Node node, const Node& top) {
    return node == top || (!IsRoot(node) && is_inside(node.GetOwner(), top));
}

TEST(Neighbours, EachEdgeThatLeavesASubtreeIsReportedOnce) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        SCOPED_TRACE(seed);
        const testing_support::RandomNest nest(seed * 3 +
                                               1); // in every third seed nodes are removed
        for (const Node& node : nest.nodes) {
            std::vector<int> reported;
            for (const pair_set& pairs : {GetChildrenEx(node), GetEdgesOutEx(node)}) {
                for (int i = 0; i < pairs->GetCount(); ++i) {
                    reported.push_back(pairs->GetItem(i).edge.GetID());
                }
            }
            std::vector<int> leaving;
            for (const Edge& edge : nest.edges) {
                const bool self = edge.From() == node && edge.To() == node;
                if (self || (is_inside(edge.From(), node) && !is_inside(edge.To(), node))) {
                    leaving.push_back(edge.GetID());
                }
            }
            std::sort(reported.begin(), reported.end());
            EXPECT_EQ(reported, leaving);
        }
    }
}

TEST(CalcDegreeEx, CountsNodesInASortedSetAndRunsInAnother) {
    const TestGraph g("C y z C/a>y C/b>y C/a>z");
    EXPECT_EQ(CalcDegreeEx(GetChildrenEx(g.node("C"))), 2);
    EXPECT_EQ(CalcDegreeEx(GetChildrenEx(g.node("z"))), 0);
    graph_ptr2<GraphSet<NodeEdgePair>> unsorted(new GraphSet<NodeEdgePair>, true);
    for (const char* caption : {"y", "z", "y", "y"}) {
        unsorted->push_back({g.node(caption), g.edges()[0]});
    }
    EXPECT_EQ(CalcDegreeEx(unsorted), 3);
}

TEST(NodeOnEdge, HoldsForEndsAndForTheBreakNodesOfTheEdge) {
    TestGraph g("a>b b>c");
    Edge first = g.edge("a>b");
    const Edge second = g.edge("b>c");
    first.AddBreakNodesIn(g.root(), 1);
    const Node bend = first.GetBreakNodes().GetItem(0);
    EXPECT_TRUE(NodeOnEdge(g.node("b"), first));
    EXPECT_FALSE(NodeOnEdge(g.node("c"), first));
    EXPECT_TRUE(NodeOnEdge(bend, first));
    EXPECT_FALSE(NodeOnEdge(bend, second));
    Node gone = g.node("c");
    gone.Remove();
    EXPECT_FALSE(NodeOnEdge(gone, first));
    first.Remove();
    EXPECT_FALSE(NodeOnEdge(g.node("a"), first));
}

TEST(Degrees, CountNeighboursOfTheWholeGraphInOneDirection) {
    const TestGraph g("C/a>b C/a>b C/a>c C/a>C/d");
    EXPECT_EQ(OutDegree(g.node("a")), 3);
    EXPECT_EQ(InDegree(g.node("b")), 1);
    EXPECT_TRUE(ExistEdgeBetweenNodes(g.node("a"), g.node("b")));
    EXPECT_FALSE(ExistEdgeBetweenNodes(g.node("b"), g.node("a")));
}

TEST(GetRoot, IsFoundFromNodesAndFromBreakNodes) {
    TestGraph g("C/D/a>b");
    Edge edge = g.edge("a>b");
    edge.AddBreakNodesIn(g.node("D"), 1);
    const Node bend = edge.GetBreakNodes().GetItem(0);
    for (const Node& node : {g.root(), g.node("a"), bend}) {
        EXPECT_EQ(GetRoot(node).get_impl().get(), g.root().get_impl().get());
    }
    edge.Remove();
    EXPECT_EQ(GetRoot(bend), bend) << "the way up from a bend is its edge";
}

TEST(NodeByOwnershipComparator, PutsOwnersFirstAndRealNodesBeforeOthers) {
    TestGraph g("a B/c b C/D/x>a");
    Node b = g.node("b");
    Node first = g.node("a");
    first.SetOwner(b); // an owner with the higher id
    EXPECT_TRUE(NodeByOwnershipComparator(b, first));
    EXPECT_FALSE(NodeByOwnershipComparator(first, b));
    EXPECT_TRUE(NodeByOwnershipComparator(g.node("C"), g.node("x")));
    EXPECT_FALSE(NodeByOwnershipComparator(g.node("x"), g.node("C")));
    EXPECT_TRUE(NodeByOwnershipComparator(g.node("B"), g.node("x"))) << "unrelated: by id";
    EXPECT_FALSE(NodeByOwnershipComparator(b, b));
    Edge edge = g.edge("x>a");
    edge.AddBreakNodesIn(g.root(), 2);
    const Node bend = edge.GetBreakNodes().GetItem(0);
    const Node next_bend = edge.GetBreakNodes().GetItem(1);
    EXPECT_TRUE(NodeByOwnershipComparator(b, bend));
    EXPECT_FALSE(NodeByOwnershipComparator(bend, b));
    EXPECT_TRUE(NodeByOwnershipComparator(b, g.root()));
    EXPECT_TRUE(NodeByOwnershipComparator(next_bend, bend)) << "ids of bends count downwards";
}

/// Gathers captions: state that has to come back from the walk.
struct Captions {
    std::string text;
    void operator()(const Node& node) { text += node.GetCaption(); }
};

TEST(ForEachNodeIn, WalksBeforeOrAfterTheInsideAndGivesTheStateBack) {
    const TestGraph g("C/D/a C/D/b C/c d");
    const Node top = g.node("C");
    EXPECT_EQ(ForEachNodeIn(top, Captions(), false, true).text, "CDabc");
    EXPECT_EQ(ForEachNodeIn(top, Captions(), true, true).text, "abDcC");
    EXPECT_EQ(ForEachNodeIn(top, Captions(), false, false).text, "Dabc");
    EXPECT_EQ(ForEachNodeIn(top, Captions(), true, false).text, "abDc");
}

} // namespace
} // namespace nurvex7
