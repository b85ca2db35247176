#pragma once

#include "nurvex7/presentation/inode_handler.h"
#include "nurvex7/presentation/rect_node_drawer.h"

namespace nurvex7 {

/// A node handler with the plain rectangular look. Its events are those of INodeHandler.
///
/// Duty    `drawer.SetIPainter` before a layout measures nodes; without a painter they have no size
class NURVEX7_API SimpleNodeHandler : public INodeHandler {
public:
    /// What measures and draws; its `info` holds the looks.
    CRectNodeDrawer drawer;

    ~SimpleNodeHandler() override;

    void Draw(Node node, tamsel7::IPainter* painter) override;
    tamsel7::size<double> GetSize(Node node) override;
    SizeAndOrigin GetSize(Node node, tamsel7::size<double> inner) override;
    void SetZoomFactor(double zoom) override;
};

} // namespace nurvex7
