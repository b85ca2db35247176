#pragma once

#include "nurvex7/presentation/inode_drawer.h"
#include "nurvex7/presentation/node_draw_info.h"

namespace nurvex7 {

/// The plain look of a node: a rectangle filled with a gradient, an outline, and a caption that is
/// cut to fit; clusters carry the caption in a band at the top.
///
/// Deliberate: the selected, new and highlight colours play no part; a highlighted node has its
/// fill lightened instead, and a selected one looks like any other.
class NURVEX7_API CRectNodeDrawer : public INodeDrawer {
public:
    /// Looks and measuring, for the application to set.
    CNodeDrawInfo info;

    tamsel7::size<double> GetSize(Node node) override;
    /// A cluster keeps a band of the caption's height over what it owns; the root gets none.
    SizeAndOrigin GetSize(Node node, tamsel7::size<double> inner) override;
    /// Draws a node that has NODE_DRAWN. Leaves pen, text colour and, away from zoom 1, font set.
    void Draw(Node node, tamsel7::IPainter* painter) override;
    void SetIPainter(tamsel7::IPainter* painter) override;
    tamsel7::IPainter* GetIPainter() const override;
    /// A zoom of 0 or below is ignored.
    void SetZoomFactor(double zoom) override;
    ~CRectNodeDrawer() override;

private:
    void draw_on(const Node& node, tamsel7::IPainter& painter);
};

} // namespace nurvex7
