// An application hears what happens to nodes without writing a handler: it connects a member
// function to a signal of the handler that draws them. The viewer calls the handler; here we do.
#include "nurvex7/nurvex7.h"

#include <cstdio>

namespace {

class Listener : public corvane2::_internal::subscriber_base_t {
public:
    void double_clicked(nurvex7::Node& node, double x, double y, int, tamsel7::MouseButton) {
        std::printf("%s at %g, %g\n", node.GetCaption().c_str(), x, y);
    }
};

} // namespace

int main() {
    const nurvex7::graph_ptr2<nurvex7::Graph> graph(new nurvex7::Graph, /*owns=*/true);
    nurvex7::Node node = graph->GetRoot().AddNode();
    node.SetCaption("server");
    const nurvex7::graph_ptr2<nurvex7::INodeHandler> handler = node.GetHandler();
    {
        Listener listener;
        handler->sig_double_click.connect(&listener, &Listener::double_clicked);
        handler->HandleDoubleClick(node, 3, 4, 0, tamsel7::MouseButton::LEFT);
    } // a listener that dies takes its connections along
    handler->HandleDoubleClick(node, 5, 6, 0, tamsel7::MouseButton::LEFT);
}
