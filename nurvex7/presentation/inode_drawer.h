#pragma once

#include "nurvex7/export.h"
#include "nurvex7/model/fwd.h"
#include "nurvex7/platform/tamsel7/geometry.h"
#include "nurvex7/presentation/handler_result.h"

namespace tamsel7 {
class IPainter;
}

namespace nurvex7 {

/// How a node looks: the part of a node handler that measures and draws.
class NURVEX7_API INodeDrawer {
public:
    /// The size that the node wants. Space: graph.
    virtual tamsel7::size<double> GetSize(Node node) = 0;
    /// The node's outer size around what it owns, and the point where that begins.
    virtual SizeAndOrigin GetSize(Node node, tamsel7::size<double> inner) = 0;
    virtual void Draw(Node node, tamsel7::IPainter* painter) = 0;
    /// The painter to measure with. Keeps: the drawer does not own it.
    virtual void SetIPainter(tamsel7::IPainter* painter) = 0;
    virtual tamsel7::IPainter* GetIPainter() const = 0;
    virtual void SetZoomFactor(double zoom) = 0;
    virtual ~INodeDrawer();
};

} // namespace nurvex7
