#include "nurvex7/presentation/rect_node_drawer.h"

#include "nurvex7/model/folding.h"
#include "nurvex7/model/node.h"
#include "nurvex7/model/queries.h"
#include "nurvex7/platform/tamsel7/painter.h"

#include <utility>

namespace nurvex7 {
namespace {

using tamsel7::IPainter;

constexpr unsigned long GRADIENT_STEPS = 100;

} // namespace

CRectNodeDrawer::~CRectNodeDrawer() = default;

tamsel7::size<double> CRectNodeDrawer::GetSize(Node node) {
    return info.GetSizeByCaption(node);
}

SizeAndOrigin CRectNodeDrawer::GetSize(Node node, tamsel7::size<double> inner) {
    if (IsRoot(node)) {
        return {inner, {0.0, 0.0}};
    }
    return size_with_band(node, GetSize(node), inner);
}

void CRectNodeDrawer::Draw(Node node, IPainter* painter) {
    if (painter == nullptr || !IsFlagSet(node, NODE_DRAWN)) {
        return;
    }
    IPainter* const kept = std::exchange(info.painter, painter);
    draw_on(node, *painter);
    info.painter = kept;
}

void CRectNodeDrawer::draw_on(const Node& node, IPainter& painter) {
    info.SetScaledFont();
    const tamsel7::pen outline{info.border_color, info.border_width, 1, 0, 0};
    painter.SetPen(outline);
    painter.SetTextColor(info.caption_color);
    const tamsel7::rectangle<double> rect = MakeDRect(node.GetPosition(), node.GetSize());
    const std::string caption = info.GetTruncatedCaption(node);

    const bool highlighted = IsFlagSet(node, NODE_HIGHLIGHTED);
    const tamsel7::_color first =
        highlighted ? tamsel7::lighten(info.fill_color_1) : info.fill_color_1;
    const tamsel7::_color second =
        highlighted ? tamsel7::lighten(info.fill_color_2) : info.fill_color_2;
    painter.GradientFill(rect.left, rect.top, rect.right, rect.bottom, first, second,
                         GRADIENT_STEPS, IPainter::GradientDirection::GRADIENT_FORWARD);
    painter.SetPen(outline);
    painter.Rectangle(rect.left, rect.top, rect.right, rect.bottom);

    // Deliberate: the size is not needed; the question stays for its effect on the painter.
    painter.GetTextSize(caption, nullptr, -1, true, true);
    const bool is_cluster = node.GetOwned().GetCount() > 0;
    painter.DrawString(rect, caption,
                       is_cluster ? IPainter::FORMAT_TOP_LEFT : IPainter::FORMAT_CENTRED, -1);
}

void CRectNodeDrawer::SetIPainter(IPainter* painter) {
    info.painter = painter;
}

IPainter* CRectNodeDrawer::GetIPainter() const {
    return info.painter;
}

void CRectNodeDrawer::SetZoomFactor(double zoom) {
    if (zoom > 0.0) {
        info.zoom = zoom;
    }
}

} // namespace nurvex7
