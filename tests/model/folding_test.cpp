#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"
#include "tests/support/random_nest.h"
#include "tests/support/test_graph.h"

#include <gtest/gtest.h>

#include <string>

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

TEST(Flags, AMaskMayHoldSeveral) {
    const TestGraph g("a");
    const Node a = g.node("a");
    Select(a);
    EXPECT_TRUE(IsFlagSet(a, NODE_HIDDEN | NODE_SELECTED));
    SetFlag(a, NODE_HIDDEN | NODE_HIGHLIGHTED, true);
    Unselect(a);
    EXPECT_EQ(a.GetCondition(), NODE_HIDDEN | NODE_HIGHLIGHTED);
}

TEST(Show, MarksAsNewOnlyWhatWasHidden) {
    const TestGraph g("a");
    const Node a = g.node("a");
    Show(a);
    EXPECT_EQ(a.GetCondition(), 0);
    Hide(a);
    Show(a);
    EXPECT_EQ(a.GetCondition(), NODE_NEW);
    Show(a);
    EXPECT_EQ(a.GetCondition(), NODE_NEW);
    MarkOld(a);
    EXPECT_EQ(a.GetCondition(), 0);
}

TEST(Fold, HidesOneStepInOneDirectionAcrossClusters) {
    const TestGraph g("C/a>b C/a>D/c b>d e>C/a");
    Fold(g.node("a"), FOLD_CHILDREN);
    EXPECT_EQ(with_flag(g, NODE_HIDDEN), "bc");
    EXPECT_EQ(queued(g), "C") << "the owners of the hidden nodes are not queued";
    Fold(g.node("a"), FOLD_PARENTS);
    EXPECT_EQ(with_flag(g, NODE_HIDDEN), "bce");
    Unfold(g.node("a"), FOLD_CHILDREN);
    EXPECT_EQ(with_flag(g, NODE_HIDDEN), "e");
    EXPECT_EQ(with_flag(g, NODE_NEW), "bc");
    EXPECT_EQ(queued(g), "CCC");
}

TEST(Fold, AnyOtherDirectionIsThatOfTheParents) {
    const TestGraph g("a>b b>c");
    Fold(g.node("b"), static_cast<FoldDirection>(7));
    EXPECT_EQ(with_flag(g, NODE_HIDDEN), "a");
}

TEST(Fold, TwiceThenUnfoldOnceShowsAll) {
    const TestGraph g("a>b a>c");
    Fold(g.node("a"), FOLD_CHILDREN);
    Fold(g.node("a"), FOLD_CHILDREN);
    Unfold(g.node("a"), FOLD_CHILDREN);
    EXPECT_EQ(with_flag(g, NODE_HIDDEN), "");
    EXPECT_EQ(with_flag(g, NODE_NEW), "bc");
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

} // namespace
} // namespace nurvex7
