#pragma once

#include "nurvex7/presentation/inode_handler.h"

namespace nurvex7 {

/// The default node handler: a bare rectangle, 10 by 10 for every node. Who wants more attaches a
/// handler of his own.
class NURVEX7_API DummyNodeHandler : public INodeHandler {
public:
    /// The last zoom above 0. A start at 1 keeps a draw before the view has told its zoom harmless.
    double zoom_factor = 1.0;

    ~DummyNodeHandler() override;

    /// Draws the rectangle of the node, its coordinates times the zoom, with the pen and the brush
    /// that the painter has.
    /// Duty    the painter is not null
    void Draw(Node node, tamsel7::IPainter* painter) override;
    tamsel7::size<double> GetSize(Node node) override;
    SizeAndOrigin GetSize(Node node, tamsel7::size<double> inner) override;
    /// A zoom of 0 or below is ignored.
    void SetZoomFactor(double zoom) override;
};

} // namespace nurvex7
