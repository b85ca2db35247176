#include "nurvex7/presentation/inode_handler.h"
#include "tests/support/placed_graph.h"
#include "tests/support/recording_painter.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

using nurvex7::CGraphTooltipEvent;
using nurvex7::INodeHandler;
using nurvex7::Node;
using tamsel7::MouseButton;

class BareHandler : public INodeHandler {
public:
    void Draw(Node, tamsel7::IPainter*) override {}
    tamsel7::size<double> GetSize(Node) override { return {}; }
    nurvex7::SizeAndOrigin GetSize(Node, tamsel7::size<double>) override { return {}; }
};

/// Notes everything that a node handler can say: the signal, the node, the arguments.
class Listener : public corvane2::_internal::subscriber_base_t {
public:
    explicit Listener(INodeHandler& handler) {
        handler.sig_button_down.connect(this, &Listener::button_down);
        handler.sig_button_up.connect(this, &Listener::button_up);
        handler.sig_mouse_move.connect(this, &Listener::mouse_move);
        handler.sig_click.connect(this, &Listener::click);
        handler.sig_double_click.connect(this, &Listener::double_click);
        handler.sig_mouse_hover.connect(this, &Listener::hover);
        handler.sig_mouse_leave.connect(this, &Listener::leave);
        handler.sig_tooltip.connect(this, &Listener::tooltip);
        handler.sig_tooltip_track.connect(this, &Listener::tooltip_track);
        handler.sig_select_rect.connect(this, &Listener::select_rect);
        handler.sig_context_menu.connect(this, &Listener::context_menu);
    }

    std::string heard;

    void button_down(Node& n, double x, double y, int f, MouseButton b) {
        pointer("button_down", n, x, y, f, b);
    }
    void button_up(Node& n, double x, double y, int f, MouseButton b) {
        pointer("button_up", n, x, y, f, b);
    }
    void mouse_move(Node& n, double x, double y, int f, MouseButton b) {
        pointer("mouse_move", n, x, y, f, b);
    }
    void click(Node& n, double x, double y, int f, MouseButton b) {
        pointer("click", n, x, y, f, b);
    }
    void double_click(Node& n, double x, double y, int f, MouseButton b) {
        pointer("double_click", n, x, y, f, b);
    }
    void hover(Node& n) { note("hover " + n.GetCaption()); }
    void leave(Node& n) { note("leave " + n.GetCaption()); }
    void tooltip(Node& n, CGraphTooltipEvent* e) {
        note("tooltip " + n.GetCaption() + " " + e->text);
    }
    void tooltip_track(Node& n, CGraphTooltipEvent* e) {
        note("track " + n.GetCaption() + " " + e->text);
    }
    void select_rect(Node& n, tamsel7::rectangle<double> r) {
        note("select " + n.GetCaption() + " " + tests::text_of(r.left) + " " +
             tests::text_of(r.top) + " " + tests::text_of(r.right) + " " +
             tests::text_of(r.bottom));
    }
    void context_menu(Node& n, double x, double y) {
        note("menu " + n.GetCaption() + " " + tests::text_of(x) + " " + tests::text_of(y));
    }

private:
    void pointer(const std::string& what, Node& n, double x, double y, int flags, MouseButton b) {
        note(what + " " + n.GetCaption() + " " + tests::text_of(x) + " " + tests::text_of(y) + " " +
             std::to_string(flags) + " " + std::to_string(static_cast<int>(b)));
    }
    void note(const std::string& line) { heard += heard.empty() ? line : "; " + line; }
};

struct Event {
    const char* name;
    int (*handle)(INodeHandler&, Node);
    const char* heard;
};

void PrintTo(const Event& s, std::ostream* out) {
    *out << s.name;
}

class DefaultNodeEvent : public testing::TestWithParam<Event> {};

TEST_P(DefaultNodeEvent, EmitsItsSignalOnceAndLeavesTheEventUnhandled) {
    const tests::PlacedGraph g;
    BareHandler handler;
    Listener listener(handler);
    EXPECT_EQ(GetParam().handle(handler, g.add("n")), nurvex7::HANDLED_NOTHING);
    EXPECT_EQ(listener.heard, GetParam().heard);
}

CGraphTooltipEvent tip() {
    CGraphTooltipEvent event;
    event.text = "tip";
    return event;
}

INSTANTIATE_TEST_SUITE_P(
    INodeHandler, DefaultNodeEvent,
    testing::Values(
        Event{"move",
              [](INodeHandler& h, Node n) {
                  return h.HandleMouseMove(n, 1.5, -2, 3, MouseButton::NONE);
              },
              "mouse_move n 1.5 -2 3 0"},
        Event{"down",
              [](INodeHandler& h, Node n) {
                  return h.HandleButtonDown(n, 1.5, -2, 3, MouseButton::LEFT);
              },
              "button_down n 1.5 -2 3 1"},
        Event{"up",
              [](INodeHandler& h, Node n) {
                  return h.HandleButtonUp(n, 1.5, -2, 3, MouseButton::RIGHT);
              },
              "button_up n 1.5 -2 3 3"},
        // Deliberate: a single click says double click; nothing here says click.
        Event{
            "click",
            [](INodeHandler& h, Node n) { return h.HandleClick(n, 1.5, -2, 3, MouseButton::LEFT); },
            "double_click n 1.5 -2 3 1"},
        Event{"double click",
              [](INodeHandler& h, Node n) {
                  return h.HandleDoubleClick(n, 1.5, -2, 3, MouseButton::LEFT);
              },
              "double_click n 1.5 -2 3 1"},
        Event{"hover", [](INodeHandler& h, Node n) { return h.HandleMouseHover(n); }, "hover n"},
        Event{"leave", [](INodeHandler& h, Node n) { return h.HandleMouseLeave(n); }, "leave n"},
        Event{"tooltip",
              [](INodeHandler& h, Node n) {
                  CGraphTooltipEvent e = tip();
                  return h.HandleOnTooltip(n, &e);
              },
              "tooltip n tip"},
        Event{"tooltip track",
              [](INodeHandler& h, Node n) {
                  CGraphTooltipEvent e = tip();
                  return h.HandleOnTooltipTrack(n, &e);
              },
              "track n tip"},
        Event{"select",
              [](INodeHandler& h, Node n) {
                  return h.HandleOnSelectRect(n, {1, 2, 3, 4});
              },
              "select n 1 2 3 4"},
        Event{"menu", [](INodeHandler& h, Node n) { return h.HandleContextMenu(n, 7, 8); },
              "menu n 7 8"}));

// What an application with the default handler hears of one double click on the screen: the click
// that it begins with, and the double click.
TEST(INodeHandler, AListenerHearsClickAndDoubleClickAlike) {
    const tests::PlacedGraph g;
    const auto handler = nurvex7::GetDefaultNodeHandler();
    Listener listener(*handler);
    const Node node = g.add("n");
    handler->HandleClick(node, 0, 0, 0, MouseButton::LEFT);
    handler->HandleDoubleClick(node, 0, 0, 0, MouseButton::LEFT);
    EXPECT_EQ(listener.heard, "double_click n 0 0 0 1; double_click n 0 0 0 1");
}

} // namespace
