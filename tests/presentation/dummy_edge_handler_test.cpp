#include "nurvex7/model/folding.h"
#include "nurvex7/presentation/dummy_edge_handler.h"
#include "tests/support/placed_graph.h"
#include "tests/support/recording_painter.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

using nurvex7::DummyEdgeHandler;
using nurvex7::Edge;
using tests::PlacedGraph;
using tests::RecordingPainter;
using Lines = std::vector<std::string>;
using Route = std::vector<tamsel7::point<double>>;

struct Drawing {
    std::string name;
    Route route;
    int flags;
    Lines lines;
};

void PrintTo(const Drawing& s, std::ostream* out) {
    *out << s.name;
}

class EdgeDrawing : public testing::TestWithParam<Drawing> {};

TEST_P(EdgeDrawing, FollowsTheBreakNodes) {
    const PlacedGraph g;
    RecordingPainter painter;
    DummyEdgeHandler handler;
    handler.SetZoomFactor(3); // the painter scales, not the handler
    const Edge edge = g.link(g.add("a"), g.add("b"), GetParam().route);
    nurvex7::SetFlag(edge, GetParam().flags, true);
    handler.Draw(edge, &painter);
    EXPECT_EQ(painter.take(), GetParam().lines);
}

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

INSTANTIATE_TEST_SUITE_P(
    DummyEdgeHandler, EdgeDrawing,
    testing::Values(
        Drawing{"no break node, no arrow head either", {}, EDGE_DRAWN, {}},
        Drawing{"a single break node", {{1, 1}}, EDGE_DRAWN, {}},
        Drawing{"one segment", segment, EDGE_DRAWN, segment_in("#000000")},
        Drawing{"the head lies on the last segment",
                {{0, 0}, {10, 0}, {10, 20}, {30, 20}},
                EDGE_DRAWN,
                {"SetPen #000000 width 1 style 1", "MoveTo 0,0", "LineTo 10,0", "LineTo 10,20",
                 "LineTo 30,20", "SetArrowSize 7,5", "BeginPlot 6", "Vertex 10,20", "Vertex 30,20",
                 "EndPlot"}},
        Drawing{"not drawn, whatever else is set", segment, EDGE_HIGHLIGHTED | EDGE_HOVERED, {}},
        Drawing{"highlighted", segment, EDGE_DRAWN | EDGE_HIGHLIGHTED, segment_in("#ff0000")},
        Drawing{"hovered", segment, EDGE_DRAWN | EDGE_HOVERED, segment_in("#4c4c4c?")},
        Drawing{"hovered on top of highlighted", segment,
                EDGE_DRAWN | EDGE_HIGHLIGHTED | EDGE_HOVERED, segment_in("#fe4c4c?")}));

TEST(DummyEdgeHandler, DrawsNothingWithoutAPainter) {
    const PlacedGraph g;
    DummyEdgeHandler handler;
    const Edge edge = g.link(g.add("a"), g.add("b"), segment);
    nurvex7::SetFlag(edge, EDGE_DRAWN, true);
    handler.Draw(edge, nullptr);
}

// Tracks of a drawing must not move when somebody picks a thicker pen or zooms.
TEST(DummyEdgeHandler, TheWidthForTheLayoutDependsOnNothing) {
    const PlacedGraph g;
    DummyEdgeHandler handler;
    handler.line_width = 9;
    handler.SetZoomFactor(4);
    EXPECT_EQ(handler.GetWidth(g.link(g.add("a"), g.add("b"), {})), 1.0);
}

struct Square {
    double zoom;
    double half;
};

void PrintTo(const Square& s, std::ostream* out) {
    *out << "zoom " << s.zoom;
}

class TooltipSquare : public testing::TestWithParam<Square> {};

TEST_P(TooltipSquare, LiesAroundThePointer) {
    const PlacedGraph g;
    DummyEdgeHandler handler;
    handler.SetZoomFactor(GetParam().zoom);
    handler.SetZoomFactor(0);
    handler.SetZoomFactor(-1);
    Edge edge = g.link(g.add("a"), g.add("b"), {});
    edge.SetCaption("calls");
    nurvex7::CGraphTooltipEvent event;
    event.pos = {100, 200};
    EXPECT_EQ(handler.HandleOnTooltip(edge, &event), nurvex7::HANDLED_DONE);
    const double r = GetParam().half;
    EXPECT_EQ(event.text, "calls");
    EXPECT_EQ(event.hot_rect.first, (tamsel7::point<double>{100 - r, 200 - r}));
    EXPECT_EQ(event.hot_rect.second, (tamsel7::point<double>{100 + r, 200 + r}));
}

INSTANTIATE_TEST_SUITE_P(DummyEdgeHandler, TooltipSquare,
                         testing::Values(Square{0.5, 1.01}, Square{1.0, 1.01},
                                         Square{2.0, 2.0 + 0.01}));

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

TEST(DummyEdgeHandler, OneServesTheWholeProcess) {
    const auto first = nurvex7::GetDefaultEdgeHandler();
    EXPECT_EQ(first.get(), nurvex7::GetDefaultEdgeHandler().get());
    EXPECT_NE(dynamic_cast<DummyEdgeHandler*>(first.get()), nullptr);
    const PlacedGraph g;
    EXPECT_EQ(g.link(g.add("a"), g.add("b"), {}).GetHandler().get(), first.get());
}

} // namespace
