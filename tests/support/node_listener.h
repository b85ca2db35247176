#pragma once

#include "nurvex7/model/node.h"
#include "nurvex7/presentation/inode_handler.h"
#include "tests/support/recording_painter.h"

#include <string>

namespace tests {

/// Notes what a node handler emits: the signal, the node, and the arguments if they are wanted.
class NodeListener : public corvane2::_internal::subscriber_base_t {
public:
    using Node = nurvex7::Node;
    using Tip = nurvex7::CGraphTooltipEvent;
    using Button = tamsel7::MouseButton;

    explicit NodeListener(nurvex7::INodeHandler& handler, bool with_arguments = true)
        : arguments(with_arguments) {
        handler.sig_button_down.connect(this, &NodeListener::down);
        handler.sig_button_up.connect(this, &NodeListener::up);
        handler.sig_mouse_move.connect(this, &NodeListener::move);
        handler.sig_click.connect(this, &NodeListener::click);
        handler.sig_double_click.connect(this, &NodeListener::double_click);
        handler.sig_mouse_hover.connect(this, &NodeListener::hover);
        handler.sig_mouse_leave.connect(this, &NodeListener::leave);
        handler.sig_tooltip.connect(this, &NodeListener::tooltip);
        handler.sig_tooltip_track.connect(this, &NodeListener::track);
        handler.sig_select_rect.connect(this, &NodeListener::select);
        handler.sig_context_menu.connect(this, &NodeListener::menu);
    }

    std::string heard; ///< `down:a up:a`

    void down(Node& n, double x, double y, int f, Button b) { pointer("down", n, x, y, f, b); }
    void up(Node& n, double x, double y, int f, Button b) { pointer("up", n, x, y, f, b); }
    void move(Node& n, double x, double y, int f, Button b) { pointer("move", n, x, y, f, b); }
    void click(Node& n, double x, double y, int f, Button b) { pointer("click", n, x, y, f, b); }
    void double_click(Node& n, double x, double y, int f, Button b) {
        pointer("double", n, x, y, f, b);
    }
    void hover(Node& n) { note("hover", n, ""); }
    void leave(Node& n) { note("leave", n, ""); }
    void tooltip(Node& n, Tip* e) { note("tooltip", n, " " + e->text); }
    void track(Node& n, Tip* e) { note("track", n, " " + e->text); }
    void menu(Node& n, double x, double y) { note("menu", n, at(x, y)); }
    void select(Node& n, tamsel7::rectangle<double> r) {
        note("select", n, at(r.left, r.top) + at(r.right, r.bottom));
    }

private:
    static std::string at(double x, double y) { return " " + text_of(x) + "," + text_of(y); }
    void pointer(const std::string& what, const Node& n, double x, double y, int flags, Button b) {
        note(what, n,
             at(x, y) + " " + std::to_string(flags) + " " + std::to_string(static_cast<int>(b)));
    }
    void note(const std::string& what, const Node& n, const std::string& with) {
        heard += (heard.empty() ? "" : " ") + what + ":" + n.GetCaption() + (arguments ? with : "");
    }

    bool arguments;
};

} // namespace tests
