#include "nurvex7/model/moving.h"
#include "tests/support/layout_probe.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

namespace {

using namespace nurvex7;
using namespace nurvex7::testing_support;

/// Notes what it is asked for and gives the owner a size.
class NotingLayout : public ILayout {
public:
    void Make(Node owner) override { note("Make", owner); }
    void Update(Node owner) override { note("Update", owner); }
    void Resize(Node owner) override { note("Resize", owner); }

    std::string calls;

private:
    void note(const std::string& what, Node owner) {
        calls += what + " " + owner.GetCaption() + "; ";
        owner.SetSize({70, 70});
    }
};

/// Does something at one of its calls.
class Meddler : public IEdgeHandler {
public:
    void Draw(Edge, tamsel7::IPainter*) override {}
    double GetWidth(Edge) const override {
        if (calls_left-- == 0) {
            meddle();
        }
        return 1;
    }

    mutable int calls_left = -1;
    std::function<void()> meddle;
};

// Whatever a handler does in the middle of a run, and even if it never returns, the next full
// layout draws as if nothing had been.
TEST(NestedRuns, AHandlerThatMeddlesOrThrowsLeavesNothingBehind) {
    for (int call = 0; call < 120; ++call) {
        SCOPED_TRACE(call);
        TestGraph g("a>b b>a b>c c>d d>e e>f a>d C/x>y c>x");
        IncLayout layout;
        Meddler meddler;
        g.use_layout(layout);
        g.graph->SetDefaultEdgeHandler(graph_ptr2<IEdgeHandler>(&meddler, /*owns=*/false));
        g.make();
        g.add("m>e d>m");
        meddler.calls_left = call / 2;
        if (call % 2 == 0) {
            meddler.meddle = [&] { g.edge("e>f").RemoveBreakNodes(); };
        } else {
            meddler.meddle = [] { throw std::runtime_error("no width"); };
        }
        try {
            g.root().UpdateLayout();
            g.recalculate();
            g.make();
        } catch (const std::runtime_error&) {
            g.node("f").Remove();
            g.add("n>o o>p p>q q>r r>s s>t t>u e>n");
        }
        meddler.calls_left = -1;
        g.make();
        EXPECT_EQ(g.edge("d>e").GetBreakNodes().GetCount(), 6);
        EXPECT_EQ(g.node("a").GetPosition().x, 35);
    }
}

TEST(NestedRuns, ANodeWithALayoutOfItsOwnIsServedByIt) {
    NotingLayout own;
    TestGraph g("A/B/x C/y d");
    g.node("B").SetLayout(graph_ptr2<ILayout>(&own, /*owns=*/false));
    g.node("d").SetLayout(graph_ptr2<ILayout>(&own, /*owns=*/false));
    g.make();
    EXPECT_EQ(own.calls, "Make B; Make d; ");
    EXPECT_EQ(g.node("A").GetSize().width, 30 + 80 + 30);
    g.update(g.root());
    EXPECT_EQ(own.calls, "Make B; Make d; Update B; Update d; ");
    g.resize(g.root());
    EXPECT_EQ(own.calls, "Make B; Make d; Update B; Update d; ") << "Resize does not go inside";
}

TEST(NestedRuns, ALeafTakesTheSizeOfItsHandlerAndLeavesTheLayoutAlone) {
    TestGraph g("a:33x44 b>c");
    LayoutProbe probe(g);
    probe.make();
    const tamsel7::size<double> drawn = probe.result_size();
    probe.get_layout().Make(g.node("a"));
    EXPECT_EQ(g.node("a").GetSize(), (tamsel7::size<double>{33, 44}));
    EXPECT_EQ(probe.result_size(), drawn);
}

TEST(NestedRuns, AMakeOfTheRootForgetsAll) {
    TestGraph g("b>c d>c");
    LayoutProbe probe(g);
    probe.make();
    g.add("a>b");
    probe.update();
    EXPECT_EQ(probe.levels(), "a | b d | c");
    g.node("a").Remove();
    probe.update();
    EXPECT_EQ(probe.levels(), "- | b d | c") << "an update keeps levels";
    probe.make();
    EXPECT_EQ(probe.levels(), "b d | c");
}

// Deliberate: a second Init appends its phases, so that a run places everything twice.
TEST(NestedRuns, ASecondInitRunsEveryPhaseTwice) {
    TestGraph g("a>b");
    LayoutProbe probe(g);
    probe.init(30, 12, 2, 5);
    probe.get_layout().Make(g.root());
    EXPECT_EQ(probe.levels(), "a a | b b");

    // Both places of a node have its neighbours, so that both go where these draw it.
    TestGraph crossing("a b>w b>x");
    LayoutProbe doubled(crossing);
    doubled.init(30, 12, 2, 5);
    doubled.get_layout().Make(crossing.root());
    EXPECT_EQ(doubled.levels(), "a a b b | w x w x");
}

// Restored twice, every node stands on its level twice, in conflict with itself: it goes down by
// its height and half an edge gap, and for its second place again.
TEST(NestedRuns, ASecondInitShiftsANodeOncePerPlace) {
    TestGraph g("a>b");
    g.layout.Init(30, 12, 2, 5);
    g.make();
    EXPECT_EQ(g.node("a").GetPosition().y, 38);
    g.update(g.root());
    EXPECT_EQ(g.node("a").GetPosition().y, 38 - 20 + 2 * (20 + 1)) << "less the root's own height";
}

// A run that a handler cuts short as soon as it is asked for a width leaves a drawing that the next
// one can go on from.
TEST(NestedRuns, AThrownWidthLosesNoNode) {
    for (int calls = 0; calls < 2; ++calls) {
        TestGraph g("a>b b>c c>d d>e a>d c>f b>f f>e f>h");
        IncLayout layout;
        Meddler meddler;
        meddler.meddle = [] { throw std::runtime_error("no width"); };
        g.use_layout(layout);
        g.graph->SetDefaultEdgeHandler(graph_ptr2<IEdgeHandler>(&meddler, /*owns=*/false));
        g.make();
        meddler.calls_left = calls;
        EXPECT_THROW(g.update(g.root()), std::runtime_error);
        EXPECT_EQ(layout.LookAhead(g.root()), UpdateOutlook::FITS);
    }
}

// The levels and the routes of a run have to agree about who is shown.
TEST(NestedRuns, AHandlerCanShowANodeInTheMiddleOfARun) {
    TestGraph g("a>b b>c a>c a>h !h");
    IncLayout layout;
    Meddler meddler;
    g.use_layout(layout);
    g.graph->SetDefaultEdgeHandler(graph_ptr2<IEdgeHandler>(&meddler, /*owns=*/false));
    g.make();
    meddler.meddle = [&] { Show(g.node("h")); };
    meddler.calls_left = 0;
    g.update(g.root());
    g.update(g.root());
    EXPECT_EQ(g.edge("a>h").GetBreakNodes().GetCount(), 4);
}

// A node has a place in every store that shows it.
TEST(NestedRuns, AnOwnerOfTwoStoresIsPlacedInTheOneAskedFor) {
    TestGraph shown("K/x");
    const TestGraph other("Z");
    shown.make();
    const auto in_other = [&](const Node& n) { return Node(other.root().get_vis(), n.get_impl()); };
    IncLayout layout;
    layout.Make(shown.node("K"));
    layout.Update(in_other(shown.node("K")));
    EXPECT_EQ(in_other(shown.node("x")).GetPosition().x, 35);
}

TEST(NestedRuns, SpacingIsThatOfInit) {
    TestGraph g("a b a>c b>c c>a");
    IncLayout wide(100, 40, 6, 10);
    g.use_layout(wide);
    g.make();
    EXPECT_EQ(g.node("a").GetPosition(), (tamsel7::point<double>{110, 40}));
    EXPECT_EQ(g.node("b").GetPosition().y, 40 + 27 + 40);
    EXPECT_EQ(g.node("c").GetPosition().x, 110 + 60 + 10 + 100 + 10);
}

TEST(NestedRuns, TenThousandOwnersInsideEachOther) {
    TestGraph g("a");
    Node inner = g.node("a");
    for (int depth = 1; depth < 10000; ++depth) {
        inner = inner.AddNode();
    }
    g.add_edge(g.node("a"), inner);
    g.add_edge(inner, inner.GetOwner());
    g.layout.Make(g.root());
    ShiftPosition(g.root(), {0, 0});
    EXPECT_EQ(g.root().GetSize().width, 60 + 10000 * 70.0);
    EXPECT_EQ(inner.GetPosition().x, 10000 * 35.0);
    g.layout.Update(g.root());
    ShiftPosition(g.root(), {0, 0});
    g.layout.Resize(g.root());
    EXPECT_EQ(inner.GetPosition().x, 10000 * 35.0);
}

} // namespace
