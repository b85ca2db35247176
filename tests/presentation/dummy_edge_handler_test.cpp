#include "nurvex7/model/folding.h"
#include "nurvex7/presentation/dummy_edge_handler.h"
#include "tests/support/placed_graph.h"
#include "tests/support/recording_painter.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

using nurvex7::DummyEdgeHandler;
using nurvex7::Edge;
using tests::PlacedGraph;
using tests::RecordingPainter;
using Lines = std::vector<std::string>;
using Route = std::vector<tamsel7::point<double>>;

const Route segment = {{10, 5}, {40, 5}};

Lines segment_in(const std::string& color) {
    return {"SetPen " + color + " width 1 style 1",
            "MoveTo 10,5",
            "LineTo 40,5",
            "SetArrowSize 7,5",
            "BeginPlot 6",
            "Vertex 10,5",
            "Vertex 40,5",
            "EndPlot"};
}

using nurvex7::EDGE_DRAWN;
using nurvex7::EDGE_HIGHLIGHTED;
using nurvex7::EDGE_HOVERED;

TEST(DummyEdgeHandler, FollowsTheBreakNodesWithAHeadOnTheLastSegment) {
    struct {
        const char* shows;
        Route route;
        int flags;
        Lines lines;
    } const cases[] = {
        {"no break node, no arrow head either", {}, EDGE_DRAWN, {}},
        {"a single break node", {{1, 1}}, EDGE_DRAWN, {}},
        {"one segment", segment, EDGE_DRAWN, segment_in("#000000")},
        {"several segments",
         {{0, 0}, {10, 0}, {10, 20}, {30, 20}},
         EDGE_DRAWN,
         {"SetPen #000000 width 1 style 1", "MoveTo 0,0", "LineTo 10,0", "LineTo 10,20",
          "LineTo 30,20", "SetArrowSize 7,5", "BeginPlot 6", "Vertex 10,20", "Vertex 30,20",
          "EndPlot"}},
        {"not drawn, whatever else is set", segment, EDGE_HIGHLIGHTED | EDGE_HOVERED, {}},
        {"highlighted", segment, EDGE_DRAWN | EDGE_HIGHLIGHTED, segment_in("#ff0000")},
        {"hovered", segment, EDGE_DRAWN | EDGE_HOVERED, segment_in("#4c4c4c?")},
        {"both", segment, EDGE_DRAWN | EDGE_HIGHLIGHTED | EDGE_HOVERED, segment_in("#fe4c4c?")}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.shows);
        const PlacedGraph g;
        RecordingPainter painter;
        DummyEdgeHandler handler;
        handler.SetZoomFactor(3); // the painter scales, not the handler
        const Edge edge = g.link(g.add("a"), g.add("b"), c.route);
        nurvex7::SetFlag(edge, c.flags, true);
        handler.Draw(edge, &painter);
        EXPECT_EQ(painter.take(), c.lines);
    }
}

// Tracks of a drawing must not move when somebody picks a thicker pen or zooms.
TEST(DummyEdgeHandler, TheWidthForTheLayoutDependsOnNothing) {
    const PlacedGraph g;
    DummyEdgeHandler handler;
    handler.line_width = 9;
    handler.SetZoomFactor(4);
    const Edge edge = g.link(g.add("a"), g.add("b"), segment);
    EXPECT_EQ(handler.GetWidth(edge), 1.0);
    nurvex7::SetFlag(edge, EDGE_DRAWN, true);
    handler.Draw(edge, nullptr); // bears it
}

TEST(DummyEdgeHandler, TheTooltipHoldsInASquareAroundThePointer) {
    for (const auto& [zoom, half] : {std::pair{0.5, 1.01}, {1.0, 1.01}, {2.0, 2.01}}) {
        const PlacedGraph g;
        DummyEdgeHandler handler;
        for (const double factor : {zoom, 0.0, -1.0}) { // only what is above zero is taken
            handler.SetZoomFactor(factor);
        }
        Edge edge = g.link(g.add("a"), g.add("b"), {});
        edge.SetCaption("calls");
        nurvex7::CGraphTooltipEvent event;
        event.pos = {100, 200};
        EXPECT_EQ(handler.HandleOnTooltip(edge, &event), nurvex7::HANDLED_DONE);
        EXPECT_EQ(event.text, "calls");
        EXPECT_EQ(event.hot_rect.first, (tamsel7::point<double>{100 - half, 200 - half}));
        EXPECT_EQ(event.hot_rect.second, (tamsel7::point<double>{100 + half, 200 + half}));
    }
}

struct Listener : corvane2::_internal::subscriber_base_t {
    void hear(Edge&) { ++heard; }
    void hear_tooltip(Edge&, nurvex7::CGraphTooltipEvent*) { ++tooltips; }
    int heard = 0;
    int tooltips = 0;
};

// Deliberate: hovering is a matter of the flag alone and tells nobody; a tooltip does.
TEST(DummyEdgeHandler, HoverSetsTheFlagInSilenceWhileTooltipsAreTold) {
    const PlacedGraph g;
    DummyEdgeHandler handler;
    Listener listener;
    handler.sig_mouse_hover.connect(&listener, &Listener::hear);
    handler.sig_mouse_leave.connect(&listener, &Listener::hear);
    handler.sig_tooltip.connect(&listener, &Listener::hear_tooltip);
    const Edge edge = g.link(g.add("a"), g.add("b"), {});
    nurvex7::SetFlag(edge, EDGE_DRAWN, true);

    EXPECT_EQ(handler.HandleMouseHover(edge), nurvex7::HANDLED_REDRAW_NODE);
    EXPECT_EQ(edge.GetCondition(), EDGE_DRAWN | EDGE_HOVERED);
    EXPECT_EQ(handler.HandleMouseLeave(edge), nurvex7::HANDLED_REDRAW_NODE);
    EXPECT_EQ(edge.GetCondition(), EDGE_DRAWN);
    nurvex7::CGraphTooltipEvent event;
    handler.HandleOnTooltip(edge, &event);
    EXPECT_EQ(listener.heard, 0);
    EXPECT_EQ(listener.tooltips, 1);
}

} // namespace
