#pragma once

#include "nurvex7/presentation/iport_node_drawer.h"
#include "nurvex7/presentation/port_node_draw_info.h"

namespace nurvex7 {

/// The rectangular look of a node with a fold port on each side: the left one stands for its
/// parents, the right one for its children. The ports are as wide as the node is high, and the body
/// between them leaves them their room even where a side has no port.
///
/// A cluster has no ports: it keeps its whole rectangle and carries its caption at the top.
class NURVEX7_API CRectPortNodeDrawer : public IPortNodeDrawer {
public:
    /// Looks and measuring, for the application to set.
    CPortNodeDrawInfo info;

    tamsel7::size<double> GetSize(Node node) override;
    /// A cluster keeps a band of the caption's height over what it owns; the root gets none.
    SizeAndOrigin GetSize(Node node, tamsel7::size<double> inner) override;
    /// Draws a node that has NODE_DRAWN. The fill tells selected from new from other nodes, and is
    /// lightened under the pointer; a highlighted node gets an outline around body and ports.
    ///
    /// Keeps   pen, brush, text colour and, away from zoom 1, font are left as they were set last;
    ///         the brush is that of the last port
    void Draw(Node node, tamsel7::IPainter* painter) override;
    void SetIPainter(tamsel7::IPainter* painter) override;
    tamsel7::IPainter* GetIPainter() const override;
    /// A zoom of 0 or below is ignored.
    void SetZoomFactor(double zoom) override;
    bool IsLeftPortClicked(Node node, double x, double y) const override;
    bool IsRightPortClicked(Node node, double x, double y) const override;
    void SetLeftPortState(int state) override;
    void SetRightPortState(int state) override;
    ~CRectPortNodeDrawer() override;

private:
    void draw_on(const Node& node, tamsel7::IPainter& painter);
    void draw_body(const Node& node, const tamsel7::rectangle<double>& body,
                   tamsel7::IPainter& painter) const;
    void draw_ports(tamsel7::rectangle<double>& around, tamsel7::IPainter& painter) const;
    bool draw_port(const tamsel7::rectangle<double>& place, int state, const char* partly_symbol,
                   tamsel7::IPainter& painter) const;
    void draw_highlight(tamsel7::rectangle<double> around, tamsel7::IPainter& painter) const;
};

} // namespace nurvex7
