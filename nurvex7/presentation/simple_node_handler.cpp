#include "nurvex7/presentation/simple_node_handler.h"

#include "nurvex7/model/node.h"

namespace nurvex7 {

SimpleNodeHandler::~SimpleNodeHandler() = default;

void SimpleNodeHandler::Draw(Node node, tamsel7::IPainter* painter) {
    drawer.Draw(node, painter);
}

tamsel7::size<double> SimpleNodeHandler::GetSize(Node node) {
    return drawer.GetSize(node);
}

SizeAndOrigin SimpleNodeHandler::GetSize(Node node, tamsel7::size<double> inner) {
    return drawer.GetSize(node, inner);
}

void SimpleNodeHandler::SetZoomFactor(double zoom) {
    drawer.SetZoomFactor(zoom);
}

} // namespace nurvex7
