#include "nurvex7/model/folding.h"
#include "nurvex7/presentation/port_node_handler.h"
#include "tests/support/viewer_window.h"

namespace {

using namespace nurvex7;
using tamsel7::MouseButton;

/// Notes the signals of the element among the calls of handlers.
struct ContentEvents : tests::ViewerWindow {
    ContentEvents() {
        add_a_and_b();
        content().RenewView(true);
        paint();
        brevolt7::CVisualElement& e = content();
        e.OnButtonDown.connect(this, &ContentEvents::on_down);
        e.OnButtonUp.connect(this, &ContentEvents::on_up);
        e.OnDoubleClick.connect(this, &ContentEvents::on_double);
        e.OnContextMenu.connect(this, &ContentEvents::on_menu);
        e.OnMouseLeave.connect(this, &ContentEvents::on_leave);
        e.OnTooltip.connect(this, &ContentEvents::on_tooltip);
        e.OnTooltipTrack.connect(this, &ContentEvents::on_tooltip);
    }
    using element = brevolt7::CVisualElement;
    void on_down(element*, int, int, int, MouseButton) { handler.notes.push_back("DOWN"); }
    void on_up(element*, int, int, int, MouseButton) { handler.notes.push_back("UP"); }
    void on_double(element*, int, int, int, MouseButton) { handler.notes.push_back("DOUBLE"); }
    void on_menu(element*, int, int) { handler.notes.push_back("MENU"); }
    void on_leave(element*) { handler.notes.push_back("LEAVE"); }
    void on_tooltip(element*, tamsel7::CTooltipEvent* e) {
        handler.notes.push_back("TIP " + e->text);
    }
};

TEST_F(ContentEvents, PressesReleasesAndClicks) {
    viewer->SetScale(2);
    look_at(10, 10);
    handler.down_result = HANDLED_DONE; // no drag begins, and the signal comes once
    struct {
        const char* name;
        tamsel7::point<int> press;
        tamsel7::point<int> release;
        const char* notes;
    } const cases[] = {
        {"a node", {30, 30}, {40, 40}, "down a 25,25 | DOWN | up a 30,30 | click a 30,30 | UP"},
        {"another node", {30, 30}, {195, 30}, "down a 25,25 | DOWN | up root 107.5,25 | UP"},
        {"empty space",
         {0, 80},
         {9, 90},
         "down root 10,50 | DOWN | up root 14.5,55 | click root 14.5,55 | UP"},
    };
    for (const auto& c : cases) {
        press(c.press.x, c.press.y);
        handler.up_result = HANDLED_DONE;
        release(c.release.x, c.release.y);
        EXPECT_EQ(notes(), c.notes) << c.name;
    }
    press(30, 30);
    press(30, 80, MouseButton::RIGHT);
    release(30, 30);
    EXPECT_EQ(notes(), "down a 25,25 | DOWN | down root 25,50 | DOWN | up a 25,25 | "
                       "click a 25,25 | UP")
        << "the first press counts";
}

TEST_F(ContentEvents, WhatNobodyHandledIsToldAgainByTheDispatcher) {
    press(25, 25);
    EXPECT_EQ(notes(), "down a 25,25 | DOWN | DOWN");
    release(25, 25);
    EXPECT_EQ(notes(), "up a 25,25 | click a 25,25 | UP | UP");
    control.ProcessDoubleClick(25, 25, 0, MouseButton::LEFT);
    EXPECT_EQ(notes(), "double a 25,25 | DOUBLE | DOUBLE");
    release(25, 25);
    EXPECT_EQ(notes(), "up a 25,25 | UP | UP") << "a double click is no press";
    control.ProcessContextMenu(125, 25);
    EXPECT_EQ(notes(), "menu b 125,25 | MENU | MENU");
    handler.other_result = HANDLED_DONE;
    control.ProcessDoubleClick(125, 25, 0, MouseButton::LEFT);
    release(125, 25);
    control.ProcessContextMenu(125, 25);
    EXPECT_EQ(notes(), "double b 125,25 | DOUBLE | up b 125,25 | UP | UP | menu b 125,25 | MENU");
}

TEST_F(ContentEvents, TheResultsOfReleaseAndClickAreJoined) {
    struct {
        int up;
        int clicked;
        const char* painted;
    } const cases[] = {
        {1, 2, "a ab"}, {0, 0, "nothing"}, {2, 4, "all"}, {2, 2, "a ab"}, {1, 3, "nothing"},
    };
    for (const auto& c : cases) {
        handler.down_result = HANDLED_DONE;
        handler.up_result = c.up;
        handler.click_result = c.clicked;
        click(25, 25);
        const std::string painted = extent_of_paint();
        EXPECT_EQ(painted, c.up == 2 && c.clicked == 2 ? "a a ab ab" : c.painted)
            << c.up << " " << c.clicked;
    }
}

TEST_F(ContentEvents, TheNodeUnderAClickStaysAtItsPixel) {
    look_at(10, 5);
    handler.click_result = HANDLED_REPAINT_ALL;
    handler.down_result = HANDLED_DONE;
    press(25, 30);
    handler.in_event = [&](Node node) {
        node.SetPosition(node.GetPosition().x + 5, node.GetPosition().y + 30);
    };
    release(25, 30);
    EXPECT_EQ(start(), "20,65") << "the node moved at the release and at the click";
    handler.in_event = nullptr;
    const int updates = layout.updates;
    placed.root().UpdateLayout();
    click(25, 80);
    EXPECT_EQ(layout.updates, updates + 1) << "at the end of the release";
    EXPECT_EQ(start(), "20,65");
}

TEST_F(ContentEvents, AClickOnAFoldPortUpdatesTheOwnerAtOnce) {
    PortNodeHandler ports;
    ports.drawer.SetIPainter(&window.measuring);
    viewer->SetDefaultNodeHandler(graph_ptr2<INodeHandler>(&ports, /*owns=*/false));
    const int updates = layout.updates;
    click(55, 30); // the right port of a
    EXPECT_TRUE(IsFlagSet(b, NODE_HIDDEN));
    EXPECT_EQ(layout.updates, updates + 1);
    EXPECT_EQ(extent_of_paint().substr(0, 3), "all");
    EXPECT_FALSE(IsFlagSet(b, NODE_DRAWN));
    EXPECT_FALSE(IsFlagSet(edge(), EDGE_DRAWN));
    click(55, 30);
    EXPECT_FALSE(IsFlagSet(b, NODE_HIDDEN));
    viewer->SetDefaultNodeHandler(graph_ptr2<INodeHandler>(&handler, /*owns=*/false));
}

TEST_F(ContentEvents, TooltipsAskTheNodeThenTheEdge) {
    viewer->SetScale(2);
    look_at(10, 10);
    struct {
        const char* name;
        int node_result;
        int edge_result;
        tamsel7::point<int> at;
        const char* notes;
        bool handled;
    } const cases[] = {
        {"a node that answers", 1, 1, {60, 30}, "tooltip a 40,25 | TIP a", true},
        {"an edge under a root that does not",
         0,
         1,
         {160, 40},
         "tooltip root 90,30 | tooltip ab | TIP ab",
         true},
        {"an edge at the border of a node that does not",
         0,
         1,
         {99, 40},
         "tooltip a 59.5,30 | tooltip ab | TIP ab",
         true},
        {"a pixel too far from the edge", 0, 1, {160, 41}, "tooltip root 90,30.5 | TIP ", false},
        {"nobody answers", 0, 0, {160, 40}, "tooltip root 90,30 | tooltip ab | TIP ab", false},
        {"the root answers for the edge", 1, 1, {160, 40}, "tooltip root 90,30 | TIP ", true},
    };
    for (const auto& c : cases) {
        handler.other_result = c.node_result;
        edge_handler.result = c.edge_result;
        tamsel7::CTooltipEvent event;
        event.pos = c.at;
        EXPECT_EQ(content().HandleOnTooltip(&event), c.handled) << c.name;
        EXPECT_EQ(notes(), c.notes) << c.name;
    }
    handler.other_result = edge_handler.result = 0;
    tamsel7::CTooltipEvent event;
    event.pos = {160, 40};
    event.text = "kept";
    EXPECT_FALSE(content().HandleOnTooltipTrack(&event));
    EXPECT_EQ(notes(), "track root 90,30 | track ab | TIP kept");
}

TEST_F(ContentEvents, TooltipsAreConvertedBothWays) {
    viewer->SetScale(2);
    look_at(10, 10);
    tamsel7::CTooltipEvent event;
    event.pos = {20, 40};
    event.hot_rect = {0, 2, 4, 6};
    event.second_rect = {8, 10, 12, 14};
    event.visible = true;
    event.text_color = {1, 2, 3};
    event.back_color = {4, 5, 6};
    event.tip_font.size = 11;
    CGraphTooltipEvent in_graph;
    content().ConvertTooltip(&event, &in_graph);
    EXPECT_EQ(in_graph.pos, (tamsel7::point<double>{20, 30}));
    EXPECT_EQ(in_graph.hot_rect.second, (tamsel7::point<double>{12, 13}));
    std::swap(in_graph.hot_rect.first.x, in_graph.hot_rect.second.x);
    std::swap(in_graph.second_rect.first.y, in_graph.second_rect.second.y);
    tamsel7::CTooltipEvent back;
    content().ConvertTooltip(&in_graph, &back);
    EXPECT_EQ(back.pos, event.pos);
    EXPECT_EQ(back.hot_rect, event.hot_rect) << "turned the right way round";
    EXPECT_EQ(back.second_rect, event.second_rect);
    EXPECT_TRUE(back.visible);
    EXPECT_EQ(back.text_color, event.text_color);
    EXPECT_EQ(back.back_color, event.back_color);
    EXPECT_EQ(back.tip_font.size, 11);
}

TEST_F(ContentEvents, WhatASubclassFollowsIsLeftWithTheElement) {
    struct Following : CContent {
        using CContent::CContent;
        using CContent::hovered_edges;
        using CContent::hovered_nodes;
        static CContent* Make(element* parent, graph_ptr2<Graph> graph, bool coords) {
            return new Following(parent, graph, coords);
        }
    };
    auto* const own = new CGraphViewer(control.GetRoot(), placed.graph, true, &Following::Make);
    auto& following = dynamic_cast<Following&>(*own->GetContent());
    following.OnMouseLeave.connect(this, &ContentEvents::on_leave);
    const Edge ab = a.GetEdgesOut().GetItem(0);
    following.hovered_nodes = {a, b};
    following.hovered_edges = {ab};
    b.Remove();
    notes();
    control.ProcessMouseMove(25, 25, 0, MouseButton::NONE);
    control.ProcessMouseLeave();
    EXPECT_EQ(notes(), "leave a | LEAVE") << "what has gone is not left, and the signal comes once";
    control.ProcessMouseMove(25, 25, 0, MouseButton::NONE);
    control.ProcessMouseLeave();
    EXPECT_EQ(notes(), "LEAVE");
}

TEST_F(ContentEvents, TheGraphMayChangeInAnyEvent) {
    struct Act {
        const char* name;
        std::function<void(Node)> act;
    } const acts[] = {
        {"the node goes", [](Node node) { node.Remove(); }},
        {"everything goes", [this](Node) { placed.root().Remove(); }},
        {"another graph comes", [this](Node) { viewer->SetGraph(graph_ptr2<Graph>()); }},
        {"another handler comes",
         [this](Node) { viewer->SetDefaultNodeHandler(GetDefaultNodeHandler()); }},
    };
    for (const Act& act : acts) {
        for (int result = 0; result <= 4; ++result) {
            SCOPED_TRACE(std::string(act.name) + " " + std::to_string(result));
            viewer->SetGraph(placed.graph);
            placed.root().Remove();
            edges.clear();
            add_a_and_b();
            equip(*placed.graph);
            look_at(0, 0);
            paint();
            handler.down_result = handler.up_result = handler.click_result = handler.other_result =
                result;
            press(25, 25);
            notes();
            const std::string start_before = start();
            handler.in_event = act.act;
            release(25, 25);
            handler.in_event = nullptr;
            EXPECT_EQ(notes().find("click"), std::string::npos)
                << "neither what has gone nor the old handler hears of the click";
            if (std::string(act.name) != "another graph comes") {
                EXPECT_EQ(start(), start_before) << "nothing is held at its pixel";
            }
            paint();
            drag({{125, 25}, {130, 30}, {140, 30}});
            content().HandleMouseLeave(&content());
            control.ProcessContextMenu(25, 25);
            paint();
        }
    }
}

TEST_F(ContentEvents, TheViewerMayDieInAnyEvent) {
    const std::vector<std::function<void()>> events = {
        [this] { press(25, 25); },
        [this] { click(25, 25); },
        [this] { control.ProcessDoubleClick(25, 25, 0, MouseButton::LEFT); },
        [this] { control.ProcessContextMenu(25, 25); },
        [this] {
            tamsel7::CTooltipEvent event;
            event.pos = {25, 25};
            content().HandleOnTooltip(&event);
        },
    };
    for (std::size_t i = 0; i < events.size(); ++i) {
        SCOPED_TRACE(i);
        const brevolt7::CElementRef alive(viewer);
        handler.other_result = handler.click_result = HANDLED_REPAINT_ALL;
        handler.in_event = [this](Node) { delete std::exchange(viewer, nullptr); };
        events[i]();
        handler.in_event = nullptr;
        EXPECT_FALSE(alive);
        release(25, 25);
        paint();
        viewer = new CGraphViewer(control.GetRoot(), placed.graph, true);
        look_at(0, 0);
        paint();
    }
}

} // namespace
