#include "apps/nurvex/fold_handler.h"
#include "apps/nurvex/series_layout.h"
#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"
#include "tests/support/test_graph.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <random>
#include <string>

namespace nurvex {
namespace {

using namespace nurvex7;
using nurvex7::testing_support::TestGraph;

std::string captions_of(node_impl_set& queue) {
    std::string text;
    for (int i = 0; i < queue.GetCount(); ++i) {
        text += queue.GetItem(i) == 0 ? "*" : queue.GetItem(i)->get_caption();
    }
    return text;
}

/// What waits for a full layout, for an update and for a resize, the root as a star.
std::string queued(const TestGraph& g) {
    const graph_ptr<IGraphVis> store = g.root().get_vis();
    return captions_of(*store->get_make_list()) + "|" + captions_of(*store->get_update_list()) +
           "|" + captions_of(*store->get_resize_list());
}

/// Captions of the shown nodes that stick out of their cluster.
std::string sticking_out(const TestGraph& g) {
    std::string text;
    for (const Node& node : g.nodes()) {
        const Node owner = node.GetOwner();
        if (IsRoot(owner) || IsFlagSet(node, NODE_HIDDEN) || IsFlagSet(owner, NODE_HIDDEN)) {
            continue;
        }
        const auto inner = MakeDRect(node.GetPosition(), node.GetSize());
        const auto outer = MakeDRect(owner.GetPosition(), owner.GetSize());
        const bool fits = inner.left >= outer.left && inner.right <= outer.right &&
                          inner.top >= outer.top && inner.bottom <= outer.bottom;
        text += fits ? "" : node.GetCaption();
    }
    return text;
}

int click(INodeHandler& handler, const Node& node, double away_from_left) {
    const auto corner = node.GetPosition();
    return handler.HandleClick(node, corner.x + away_from_left, corner.y + 1, 0,
                               tamsel7::MouseButton::LEFT);
}

// Nodes are 60 wide and 20 high, and so are ports squares of 20.
constexpr double PARENTS = 5;
constexpr double BODY = 30;
constexpr double CHILDREN = 55;

TEST(FoldHandler, ClicksQueueTheOwnersOfWhatTheyChange) {
    struct {
        const char* what;
        const char* words; ///< the graph that is drawn first
        const char* added; ///< what is added then
        const char* clicked;
        double where;
        const char* expected; ///< what is queued
    } const clicks[] = {
        {"a selection", "a>b", "", "a", BODY, "||"},
        {"children beside the node", "a>b a>c", "", "a", CHILDREN, "|*|"},
        {"children in two other clusters", "C/a>D/b C/a>E/c C/a>D/d", "", "a", CHILDREN, "|CDE|"},
        {"a parent around the cluster", "C/a>C/b d>C/b", "", "b", PARENTS, "|C*|"},
        {"a neighbour inside a cluster beside the node", "a>C/b a>C/D/c", "", "a", CHILDREN, "|*|"},
        {"a cluster inside another that is concerned", "C/a>D/b C/a>D/E/c", "", "a", CHILDREN,
         "|CD|"},
        {"a parent that comes back", "C/a>D/b C/c !a", "", "b", PARENTS, "|DC|C"},
        {"children that come back above a sibling", "C/a>D/p C/a>D/r D/q>D/p D/q>D/r D/q>D/s !p !r",
         "", "a", CHILDREN, "|CD|D"},
        {"children in clusters that are hidden", "C/a>D/b C/a>D/E/c !b !c !D !E", "", "a", CHILDREN,
         "|C*|D*E"},
        {"a new chain in another cluster", "C/a D/q", "C/a>D/p C/a>D/r D/q>D/p D/p>D/r !p !r", "a",
         CHILDREN, "D|CD|D"},
        {"a new chain in a cluster that the update of the root would reach", "a>b D/q",
         "a>D/p a>D/r D/q>D/p D/p>D/r !p !r", "a", CHILDREN, "D|*|D"},
        {"a new cluster that the update of the root reaches", "a>b", "a>D/p D/q !p", "a", CHILDREN,
         "|*|D"},
        {"a new cluster beside that of the node", "C/a", "C/a>D/p D/q !p", "a", CHILDREN,
         "D|CD|D"}};
    for (const auto& c : clicks) {
        SCOPED_TRACE(c.what);
        TestGraph g(c.words);
        g.make();
        g.add(c.added);
        FoldHandler handler;
        const Node clicked = g.node(c.clicked);
        EXPECT_EQ(click(handler, clicked, c.where), HANDLED_REPAINT_ALL);
        EXPECT_EQ(queued(g), c.expected);
        for (int i = 0; i < 3; ++i) { // there and back; no update runs for ever
            g.recalculate();
            EXPECT_EQ(sticking_out(g), "");
            EXPECT_EQ(g.layout.LookAhead(clicked.GetOwner()), UpdateOutlook::NOTHING_NEW);
            click(handler, clicked, c.where);
        }
    }
}

// What a handler without these owners does not do.
TEST(FoldHandler, OtherClustersCloseUpAndOpenAgain) {
    TestGraph g("C/a>D/p C/a>D/r D/q>D/p D/q>D/r D/q>D/s");
    g.make();
    const auto height_of_d = [&] { return g.node("D").GetSize().height; };
    const double full = height_of_d();
    FoldHandler handler;
    click(handler, g.node("a"), CHILDREN);
    g.recalculate();
    EXPECT_LT(height_of_d(), full);
    click(handler, g.node("a"), CHILDREN);
    g.recalculate();
    EXPECT_EQ(height_of_d(), full);
}

void click_at_random(TestGraph& g, unsigned seed) {
    std::mt19937 random(seed);
    const auto pick = [&] { return g.nodes()[random() % g.nodes().size()]; };
    const auto owner = [&] { return random() % 3 == 0 ? pick() : g.root(); };
    g.add("a b c");
    for (int i = 0; i < 60; ++i) {
        if (i % 3 == 0) {
            g.add_node(owner(), "n");
        }
        g.add_edge(pick(), pick());
        SetFlag(pick(), NODE_HIDDEN, random() % 2 == 0);
    }
    g.make();
    FoldHandler handler;
    for (int i = 0; i < 30; ++i) {
        const Node clicked = pick();
        if (!IsFlagSet(clicked, NODE_HIDDEN)) {
            click(handler, clicked, i % 2 == 0 ? PARENTS : CHILDREN);
            g.recalculate();
            ASSERT_EQ(sticking_out(g), "") << "seed " << seed << " click " << i;
        }
    }
}

TEST(FoldHandler, NothingSticksOutOfItsClusterAfterAnyClick) {
    for (unsigned seed = 1; seed <= 12; ++seed) {
        TestGraph g;
        click_at_random(g, seed);
        TestGraph in_series;
        SeriesLayout layout(30, 12, 2, 5);
        in_series.use_layout(layout);
        click_at_random(in_series, seed);
    }
}

// The root is as high as the old node that ends below the one that comes back, and no column moves.
TEST(FoldHandler, WithALayoutForASeriesNothingIsResizedAfterAnUnfold) {
    TestGraph g("a>p a>r q>p q>r q>s !p !r");
    SeriesLayout layout(30, 12, 2, 5);
    g.use_layout(layout);
    g.make();
    FoldHandler handler;
    click(handler, g.node("a"), CHILDREN);
    EXPECT_EQ(queued(g), "|*|");
    g.recalculate();
    double lowest = 0;
    for (const Node& node : g.nodes()) {
        lowest = std::max(lowest, node.GetPosition().y + node.GetSize().height);
    }
    EXPECT_GE(g.root().GetSize().height, lowest);
}

TEST(FoldHandler, AListenerMayRemoveWhatWasClickedAndItsNeighbours) {
    struct Remover : corvane2::_internal::subscriber_base_t {
        void Remove(Node&, double, double, int, tamsel7::MouseButton) { removed->Remove(); }
        std::optional<Node> removed;
    };
    for (const char* removed : {"a", "b"}) {
        TestGraph g("C/a>D/b C/a>D/c");
        g.make();
        FoldHandler handler;
        Remover remover;
        remover.removed = g.node(removed);
        handler.sig_click.connect(&remover, &Remover::Remove);
        EXPECT_EQ(click(handler, g.node("a"), CHILDREN), HANDLED_REPAINT_ALL);
        g.recalculate();
        EXPECT_TRUE(IsFlagSet(g.node("c"), NODE_HIDDEN));
    }
}

} // namespace
} // namespace nurvex
