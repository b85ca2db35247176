#include "nurvex7/presentation/dummy_node_handler.h"

#include "nurvex7/model/node.h"
#include "nurvex7/platform/tamsel7/painter.h"

namespace nurvex7 {

DummyNodeHandler::~DummyNodeHandler() = default;

void DummyNodeHandler::Draw(Node node, tamsel7::IPainter* painter) {
    const tamsel7::point<double> corner = node.GetPosition();
    const tamsel7::size<double> extent = node.GetSize();
    const double z = zoom_factor;
    // Deliberate: the handler scales this rectangle itself, unlike the lines of an edge, and reads
    // no flag.
    painter->Rectangle(corner.x * z, corner.y * z, corner.x * z + extent.width * z,
                       corner.y * z + extent.height * z);
}

tamsel7::size<double> DummyNodeHandler::GetSize(Node) {
    return {10.0, 10.0};
}

SizeAndOrigin DummyNodeHandler::GetSize(Node, tamsel7::size<double> inner) {
    return {inner, {0.0, 0.0}};
}

void DummyNodeHandler::SetZoomFactor(double zoom) {
    if (zoom > 0.0) {
        zoom_factor = zoom;
    }
}

graph_ptr2<INodeHandler> GetDefaultNodeHandler() {
    static const graph_ptr2<INodeHandler> handler(new DummyNodeHandler, /*owns=*/true);
    return handler;
}

} // namespace nurvex7
