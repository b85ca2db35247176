#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"
#include "tests/support/plain_hits.h"
#include "tests/support/random_nest.h"
#include "tests/support/test_graph.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace nurvex7 {
namespace {

using testing_support::TestGraph;

/// Captions of the nodes that carry a flag, as they were added.
std::string with_flag(const TestGraph& g, int flag) {
    std::string text;
    for (const Node& node : g.nodes()) {
        text += IsFlagSet(node, flag) ? node.GetCaption() : "";
    }
    return text;
}

/// Captions of the owners that wait for an update.
std::string queued(const TestGraph& g) {
    const auto list = g.root().get_vis()->get_update_list();
    std::string text;
    for (int i = 0; i < list->GetCount(); ++i) {
        text += list->GetItem(i) == 0 ? "*" : list->GetItem(i)->get_caption();
    }
    return text;
}

TEST(Show, MarksAsNewOnlyWhatWasHidden) {
    const TestGraph g("a");
    const Node a = g.node("a");
    Select(a);
    Show(a);
    EXPECT_EQ(a.GetCondition(), NODE_SELECTED);
    Hide(a);
    EXPECT_TRUE(IsFlagSet(a, NODE_HIDDEN | NODE_HIGHLIGHTED)) << "a mask may hold several";
    Show(a);
    Show(a);
    EXPECT_EQ(a.GetCondition(), NODE_SELECTED | NODE_NEW);
    MarkOld(a);
    Unselect(a);
    EXPECT_EQ(a.GetCondition(), 0);
}

TEST(Fold, HidesOneStepInOneDirectionAcrossClusters) {
    const TestGraph g("C/a>b C/a>D/c b>d e>C/a");
    Fold(g.node("a"), FOLD_CHILDREN);
    EXPECT_EQ(with_flag(g, NODE_HIDDEN), "bc");
    EXPECT_EQ(queued(g), "C") << "the owners of the hidden nodes are not queued";
    Fold(g.node("a"), static_cast<FoldDirection>(7)); // any other direction is that of the parents
    EXPECT_EQ(with_flag(g, NODE_HIDDEN), "bce");
    Fold(g.node("a"), FOLD_CHILDREN);
    Unfold(g.node("a"), FOLD_CHILDREN);
    EXPECT_EQ(with_flag(g, NODE_HIDDEN), "e");
    EXPECT_EQ(with_flag(g, NODE_NEW), "bc");
    EXPECT_EQ(queued(g), "CCCC") << "folded twice, unfolded once";
}

// Deliberate: folding nothing clears the marks and queues, unfolding nothing does nothing.
TEST(Fold, OfNothingStillClearsMarksAndQueuesButUnfoldDoesNot) {
    const TestGraph g("a C/b");
    Hide(g.node("b"));
    Show(g.node("b"));
    Unfold(g.node("a"), FOLD_CHILDREN);
    EXPECT_EQ(with_flag(g, NODE_NEW), "b");
    EXPECT_EQ(queued(g), "");
    Fold(g.node("a"), FOLD_CHILDREN);
    EXPECT_EQ(with_flag(g, NODE_NEW), "");
    EXPECT_EQ(queued(g), "*");
}

TEST(Fold, OnTheRootOnABreakNodeAndOnARemovedNodeDoesNothing) {
    TestGraph g("a>b c");
    Edge edge = g.edge("a>b");
    edge.AddBreakNodesIn(g.root(), 1);
    Node removed = g.node("c");
    removed.Remove();
    for (const Node& node : {g.root(), edge.GetBreakNodes().GetItem(0), removed}) {
        Fold(node, FOLD_CHILDREN);
        Unfold(node, FOLD_PARENTS);
    }
    EXPECT_EQ(with_flag(g, NODE_HIDDEN), "");
    EXPECT_EQ(queued(g), "");
}

std::string drawn_edges(const TestGraph& g) {
    std::string text;
    for (const Edge& edge : g.edges()) {
        text += IsFlagSet(edge, EDGE_DRAWN) ? edge.GetCaption() + " " : "";
    }
    return text;
}

TEST(MarkDrawnIn, AHiddenClusterTakesItsInsideAndAllItsEdgesAlong) {
    const TestGraph g("C/D/a>b C/c b>C/c b>e !C");
    MarkDrawnIn(g.graph);
    EXPECT_EQ(with_flag(g, NODE_DRAWN), "be");
    EXPECT_EQ(with_flag(g, NODE_HIDDEN), "C");
    EXPECT_EQ(drawn_edges(g), "b>e ");
    Show(g.node("C"));
    MarkDrawnIn(g.graph);
    EXPECT_EQ(with_flag(g, NODE_DRAWN), "CDabce");
    EXPECT_EQ(drawn_edges(g), "a>b b>c b>e ");
    EXPECT_FALSE(IsFlagSet(g.root(), NODE_DRAWN));
}

bool is_drawn(const Node& node) {
    return IsRoot(node) || (!IsFlagSet(node, NODE_HIDDEN) && is_drawn(node.GetOwner()));
}

TEST(MarkDrawnIn, FollowsTheHiddenOwnersOfRandomNests) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        testing_support::RandomNest nest(seed * 3 + 1);
        for (const Node& node : nest.nodes) {
            SetFlag(node, NODE_HIDDEN, nest.below(4) == 0);
            SetFlag(node, NODE_DRAWN, nest.below(2) == 0);
        }
        MarkDrawnIn(nest.graph);
        for (const Node& node : nest.nodes) {
            EXPECT_EQ(IsFlagSet(node, NODE_DRAWN), is_drawn(node));
        }
        for (const Edge& edge : nest.edges) {
            EXPECT_EQ(IsFlagSet(edge, EDGE_DRAWN), is_drawn(edge.From()) && is_drawn(edge.To()));
        }
    }
}

// Marks that stand are not written again, so everything that they hang on has to tell.
TEST(MarkDrawnIn, WritesAgainAfterEveryKindOfChange) {
    TestGraph g("C/D/a>b C/c b>C/c b>e");
    const std::vector<std::function<void()>> changes = {
        [&] { Hide(g.node("C")); },
        [&] { Hide(g.node("D")); },
        [&] { Show(g.node("C")); },
        [&] { SetFlag(g.node("a"), NODE_DRAWN, true); },
        [&] { SetFlag(g.node("e"), NODE_DRAWN, false); },
        [&] { _mark_edge_nondrawn(g.edge("b>e")); },
        [&] { g.add_node(g.node("D"), "f"); },
        [&] { g.add_edge(g.node("b"), g.node("a")); },
        [&] { g.add_edge(g.node("a"), g.node("e")); },
        [&] { Node(g.node("a")).SetOwner(g.root()); },
        [&] { Node(g.node("e")).SetOwner(g.node("D")); },
        [&] { Edge(g.edge("b>e")).Remove(); },
        [&] { Node(g.node("b")).Remove(); },
        [&] {
            Node replaced = g.graph->GetRoot();
            g.graph->SetStorage(new DefaultStorage(new DefaultRootNodeImpl));
            replaced.Remove(); // a graph empties no storage but its last one
        },
        [&] { g.graph->GetRoot().AddNode(); },
    };
    for (std::size_t i = 0; i < changes.size(); ++i) {
        EXPECT_TRUE(testing_support::marks_like_a_walk(g.graph)) << "before change " << i;
        changes[i]();
        EXPECT_TRUE(testing_support::marks_like_a_walk(g.graph)) << "after change " << i;
    }
}

// Two graphs write over each other's marks where one shows the inside of a node of the other.
TEST(MarkDrawnIn, TheLastOfTwoGraphsOfOneNodeIsRight) {
    const TestGraph g("X/C/a !X");
    const graph_ptr2<Graph> inside(new Graph, /*owns=*/true);
    inside->SetStorage(new DefaultStorage(g.node("C").get_impl()));
    for (int again = 0; again < 3; ++again) {
        MarkDrawnIn(inside);
        EXPECT_TRUE(IsFlagSet(g.node("a"), NODE_DRAWN));
        MarkDrawnIn(g.graph);
        EXPECT_FALSE(IsFlagSet(g.node("a"), NODE_DRAWN));
    }
    inside->SetStorage(new DefaultStorage(new DefaultRootNodeImpl));
}

// A node of another kind may change and not tell.
TEST(MarkDrawnIn, AsksNodesOfAnotherKindEachTime) {
    struct Quiet : DefaultNodeImpl {
        using DefaultNodeImpl::DefaultNodeImpl;
    };
    const TestGraph g("C/a");
    Quiet* const quiet = new Quiet(g.node("C").get_impl());
    static_cast<DefaultNodeImpl&>(*g.node("C").get_impl()).owned->push_back(quiet);
    for (const int condition : {0, int{NODE_HIDDEN}, 0}) {
        quiet->condition = condition;
        MarkDrawnIn(g.graph);
        EXPECT_EQ(quiet->condition, condition == 0 ? NODE_DRAWN : NODE_HIDDEN);
    }
}

} // namespace
} // namespace nurvex7
