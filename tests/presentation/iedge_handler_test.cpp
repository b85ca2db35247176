#include "nurvex7/presentation/iedge_handler.h"
#include "tests/support/placed_graph.h"

#include <gtest/gtest.h>

namespace {

using nurvex7::CGraphTooltipEvent;
using nurvex7::Edge;
using nurvex7::IEdgeHandler;
using tamsel7::MouseButton;

class BareHandler : public IEdgeHandler {
public:
    void Draw(Edge, tamsel7::IPainter*) override {}
    double GetWidth(Edge) const override { return 1; }
};

/// Notes which signals of an edge handler fire.
class Listener : public corvane2::_internal::subscriber_base_t {
public:
    explicit Listener(IEdgeHandler& handler) {
        handler.sig_button_down.connect(this, &Listener::button_down);
        handler.sig_button_up.connect(this, &Listener::button_up);
        handler.sig_mouse_move.connect(this, &Listener::mouse_move);
        handler.sig_click.connect(this, &Listener::click);
        handler.sig_double_click.connect(this, &Listener::double_click);
        handler.sig_mouse_hover.connect(this, &Listener::hover);
        handler.sig_mouse_leave.connect(this, &Listener::leave);
        handler.sig_tooltip.connect(this, &Listener::tooltip);
        handler.sig_tooltip_track.connect(this, &Listener::tooltip_track);
    }

    std::string heard;

    void button_down(Edge& e, double, double, int, MouseButton) { note("down", e); }
    void button_up(Edge& e, double, double, int, MouseButton) { note("up", e); }
    void mouse_move(Edge& e, double, double, int, MouseButton) { note("move", e); }
    void click(Edge& e, double, double, int, MouseButton) { note("click", e); }
    void double_click(Edge& e, double, double, int, MouseButton) { note("double_click", e); }
    void hover(Edge& e) { note("hover", e); }
    void leave(Edge& e) { note("leave", e); }
    void tooltip(Edge& e, CGraphTooltipEvent*) { note("tooltip", e); }
    void tooltip_track(Edge& e, CGraphTooltipEvent*) { note("track", e); }

private:
    void note(const std::string& what, Edge& e) { heard += what + " " + e.GetCaption() + ";"; }
};

template <int (IEdgeHandler::*operation)(Edge, double, double, int, MouseButton)>
int pointer(IEdgeHandler& handler, Edge edge) {
    return (handler.*operation)(edge, 1, 2, 0, MouseButton::LEFT);
}

template <int (IEdgeHandler::*operation)(Edge)>
int visit(IEdgeHandler& handler, Edge edge) {
    return (handler.*operation)(edge);
}

template <int (IEdgeHandler::*operation)(Edge, CGraphTooltipEvent*)>
int tooltip(IEdgeHandler& handler, Edge edge) {
    CGraphTooltipEvent event;
    return (handler.*operation)(edge, &event);
}

TEST(IEdgeHandler, EachEventEmitsItsSignalOnceAndStaysUnhandled) {
    struct {
        const char* heard;
        int (*handle)(IEdgeHandler&, Edge);
    } const events[] = {{"move e;", pointer<&IEdgeHandler::HandleMouseMove>},
                        {"down e;", pointer<&IEdgeHandler::HandleButtonDown>},
                        {"up e;", pointer<&IEdgeHandler::HandleButtonUp>},
                        // Deliberate: a single click says double click here too.
                        {"double_click e;", pointer<&IEdgeHandler::HandleClick>},
                        {"double_click e;", pointer<&IEdgeHandler::HandleDoubleClick>},
                        {"hover e;", visit<&IEdgeHandler::HandleMouseHover>},
                        {"leave e;", visit<&IEdgeHandler::HandleMouseLeave>},
                        {"tooltip e;", tooltip<&IEdgeHandler::HandleOnTooltip>},
                        {"track e;", tooltip<&IEdgeHandler::HandleOnTooltipTrack>}};
    for (const auto& event : events) {
        const tests::PlacedGraph g;
        BareHandler handler;
        Listener listener(handler);
        Edge edge = g.link(g.add("a"), g.add("b"), {});
        edge.SetCaption("e");
        EXPECT_EQ(event.handle(handler, edge), nurvex7::HANDLED_NOTHING);
        EXPECT_EQ(listener.heard, event.heard);
    }
}

} // namespace
