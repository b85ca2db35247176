#include "nurvex7/presentation/inode_handler.h"
#include "tests/support/node_listener.h"
#include "tests/support/placed_graph.h"

#include <gtest/gtest.h>

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

TEST(INodeHandler, EachEventEmitsItsSignalOnceAndStaysUnhandled) {
    struct {
        int (*handle)(INodeHandler&, Node);
        const char* heard;
    } const events[] = {
        {[](auto& h, Node n) { return h.HandleMouseMove(n, 1.5, -2, 3, MouseButton::NONE); },
         "move:n 1.5,-2 3 0"},
        {[](auto& h, Node n) { return h.HandleButtonDown(n, 1.5, -2, 3, MouseButton::LEFT); },
         "down:n 1.5,-2 3 1"},
        {[](auto& h, Node n) { return h.HandleButtonUp(n, 1.5, -2, 3, MouseButton::RIGHT); },
         "up:n 1.5,-2 3 3"},
        // Deliberate: a single click says double click; nothing here says click.
        {[](auto& h, Node n) { return h.HandleClick(n, 1.5, -2, 3, MouseButton::LEFT); },
         "double:n 1.5,-2 3 1"},
        {[](auto& h, Node n) { return h.HandleDoubleClick(n, 1.5, -2, 3, MouseButton::LEFT); },
         "double:n 1.5,-2 3 1"},
        {[](auto& h, Node n) { return h.HandleMouseHover(n); }, "hover:n"},
        {[](auto& h, Node n) { return h.HandleMouseLeave(n); }, "leave:n"},
        {[](auto& h, Node n) {
             CGraphTooltipEvent e;
             e.text = "tip";
             return h.HandleOnTooltip(n, &e);
         },
         "tooltip:n tip"},
        {[](auto& h, Node n) {
             CGraphTooltipEvent e;
             e.text = "tip";
             return h.HandleOnTooltipTrack(n, &e);
         },
         "track:n tip"},
        {[](auto& h, Node n) {
             return h.HandleOnSelectRect(n, {1, 2, 3, 4});
         },
         "select:n 1,2 3,4"},
        {[](auto& h, Node n) { return h.HandleContextMenu(n, 7, 8); }, "menu:n 7,8"}};
    for (const auto& event : events) {
        const tests::PlacedGraph g;
        BareHandler handler;
        tests::NodeListener listener(handler);
        EXPECT_EQ(event.handle(handler, g.add("n")), nurvex7::HANDLED_NOTHING);
        EXPECT_EQ(listener.heard, event.heard);
    }
}

} // namespace
