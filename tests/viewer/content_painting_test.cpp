#include "nurvex7/model/folding.h"
#include "nurvex7/model/moving.h"
#include "tests/support/viewer_window.h"

namespace {

using namespace nurvex7;

struct ContentPainting : tests::ViewerWindow {
    /// Has handlers ask for a repaint of their node alone.
    void redraw(const std::vector<Node>& nodes) {
        handler.other_result = HANDLED_REDRAW_NODE;
        for (const Node& node : nodes) {
            const auto at = node.GetPosition();
            control.ProcessContextMenu(static_cast<int>(at.x) + 2, static_cast<int>(at.y) + 2);
        }
    }
    void renew() {
        content().RenewView(true);
        paint();
    }
};

TEST_F(ContentPainting, NodesComeBeforeEdgesAndOwnersBeforeWhatTheyOwn) {
    add_a_and_b();
    Node inner = placed.add("inner", {30, 60, 50, 70});
    const Node cluster = placed.add("cluster", {20, 50, 100, 90});
    inner.SetOwner(cluster);
    content().RenewView(true);
    EXPECT_EQ(paint(), "[0,0,200,100] a b cluster inner root ab");
    EXPECT_TRUE(IsFlagSet(inner, NODE_DRAWN));
    EXPECT_EQ(paint(), "") << "nothing has changed since";
    Hide(cluster);
    renew();
    EXPECT_FALSE(IsFlagSet(inner, NODE_DRAWN)) << "handlers ask the marks";
}

TEST_F(ContentPainting, EveryChangeIsInTheNextFrame) {
    add_a_and_b();
    const auto route = [&] { return edge().GetBreakNodes(); };
    const std::vector<std::pair<std::function<void()>, std::string>> changes = {
        {[] {}, "a b root ab"},
        {[&] { b.SetPosition(300, 20); }, "a root ab"},
        {[&] { route().GetItem(0).SetPosition(300, 30); }, "a root ab"},
        {[&] { route().GetItem(1).SetPosition(310, 30); }, "a root"},
        {[&] { MoveNode(b, 120, 20); }, "a b root ab"},
        {[&] { a.SetPosition(-90, 20); }, "b root ab"},
        {[&] {
             a.SetSize({95, 20});
         },
         "a b root ab"},
        {[&] { edge().RemoveBreakNodes(); }, "a b root"},
        {[&] { edge().AddBreakNodesIn(placed.root(), 2); }, "a b root ab"},
        {[&] {
             placed.add_to(b, "inner", {130, 25, 140, 35});
         },
         "a b inner root ab"},
        {[&] { a.SetOwner(b); }, "b a inner root ab"},
        {[&] { edge().Remove(); }, "b a inner root"},
        {[&] { b.Remove(); }, "root"},
    };
    for (std::size_t i = 0; i < changes.size(); ++i) {
        changes[i].first();
        content().RenewView(true);
        EXPECT_EQ(paint(), "[0,0,200,100] " + changes[i].second) << "change " << i;
    }
}

TEST_F(ContentPainting, WhatIsPaintedIsWhatShows) {
    add_a_and_b();
    viewer->SetScale(2);
    look_at(100, 10);
    EXPECT_EQ(paint(), "[100,10,200,60] b root ab");
    EXPECT_EQ(handler.zoom, 2);
    look_at(161.5, 10);
    EXPECT_EQ(paint(), "[161.5,10,261.5,60] b root") << "the border of b reaches over its side";
    look_at(163, 10);
    EXPECT_EQ(paint(), "[163,10,263,60] root");
}

TEST_F(ContentPainting, UpToTwoChangedNodesArePaintedOverThemselves) {
    add_a_and_b();
    Node c = placed.add("c", {20, 70, 60, 90});
    placed.add_to(b, "inner", {130, 25, 140, 35});
    renew();
    redraw({b});
    EXPECT_EQ(paint(), "b inner ab");
    redraw({b, a});
    EXPECT_EQ(paint(), "a b inner ab ab") << "each brings the edges across it";
    redraw({a, b, c});
    EXPECT_EQ(extent_of_paint(), "all");
    redraw({c});
    c.Remove();
    EXPECT_EQ(paint(), "") << "what is gone is not painted, and the three are forgotten";
}

TEST_F(ContentPainting, ResultsAskForRepaints) {
    add_a_and_b();
    renew();
    struct {
        int result;
        bool handled;
        const char* painted;
        std::size_t renewals;
    } const cases[] = {
        {-1, true, "nothing", 0},
        {HANDLED_NOTHING, false, "nothing", 0},
        {HANDLED_DONE, true, "nothing", 0},
        {HANDLED_REDRAW_NODE, true, "a ab", 1},
        {HANDLED_RENEW, true, "nothing", 1},
        {HANDLED_REPAINT_ALL, true, "all", 1},
        {7, true, "all", 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.result);
        views.clear();
        handler.other_result = c.result;
        EXPECT_EQ(content().HandleContextMenu(25, 25), c.handled);
        EXPECT_EQ(views.size(), c.renewals);
        EXPECT_EQ(extent_of_paint(), c.painted);
    }
    redraw({a});
    content().HandleEpilogue(HANDLED_REPAINT_ALL);
    EXPECT_EQ(paint(), "[0,0,200,100] a b root ab") << "the node alone is not painted as well";
}

TEST_F(ContentPainting, ThePaintBringsTheLayoutUpToDate) {
    const int before = layout.updates;
    placed.root().UpdateLayout();
    views.clear();
    content().RenewView(false);
    EXPECT_EQ(layout.updates, before);
    EXPECT_EQ(extent_of_paint(), "all");
    EXPECT_EQ(layout.updates, before + 1);
    EXPECT_EQ(views.size(), 2U) << "the renewal, and the layout that changed";
    EXPECT_FALSE(content().RecalculateLayout(nullptr));
}

TEST_F(ContentPainting, ScrollingByWholePixelsPaintsWhatComesIntoView) {
    add_a_and_b();
    renew();
    window.can_scroll = true;
    viewer->SetStartX(20);
    EXPECT_EQ(paint(), "[200,0,220,100] root");
    viewer->SetStartX(10);
    EXPECT_EQ(paint(), "[10,0,20,100] a root") << "a begins where the piece ends";
    viewer->SetStartX(10.5);
    EXPECT_EQ(paint(), "[10.5,0,210.5,100] a b root ab") << "half pixels cannot be moved";
    EXPECT_EQ(asked_for("ScrollPixels"), 2);
}

TEST_F(ContentPainting, WithoutItsCoordinatesItPaintsInThoseOfTheListener) {
    struct Listener : corvane2::_internal::subscriber_base_t {
        void HandleBeforeDraw(brevolt7::CVisualElement*, tamsel7::IPainter* painter) {
            tamsel7::IPainter::CoordInfo info{0, 1000, 0, 400, 200, 0, 0, 200, 100};
            painter->SetCoordSystem(tamsel7::IPainter::MapMode::MAP_LOGICAL, &info);
        }
    } listener;
    viewer->SetNeedCoordSystem(false);
    content().OnBeforeDraw.connect(&listener, &Listener::HandleBeforeDraw);
    content().RenewView(true);
    EXPECT_EQ(paint(), "[1000,0,1400,200]");
}

TEST_F(ContentPainting, EmptyGraphsAndEmptyWindows) {
    const tests::PlacedGraph empty;
    equip(*empty.graph);
    viewer->SetGraph(empty.graph);
    EXPECT_EQ(paint(), "[-100,-50,100,50] root") << "the root is a point in the middle";
    viewer->SetGraph(placed.graph);
    add_a_and_b();
    for (const tamsel7::size<int> size : {tamsel7::size<int>{0, 0}, {0, 50}, {50, 0}}) {
        control.ProcessResize(size);
        viewer->SetScale(3);
        viewer->SetViewWidth(10);
        viewer->SetViewHeight(10);
        EXPECT_EQ(viewer->GetScale(), size.width > 0 ? 5 : size.height > 0 ? 5 : 3);
        viewer->SetGraph(placed.graph);
        click(0, 0);
        drag({{0, 0}, {5, 5}});
        EXPECT_EQ(paint(), "");
    }
}

} // namespace
