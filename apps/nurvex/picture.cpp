#include "apps/nurvex/picture.h"

namespace nurvex {

using tamsel7::IPainter;

void Picture::BeginPage(nurvex7::qt::QtPainter& painter, const QRectF& page,
                        const tamsel7::_color& background) {
    painter.BeginPaint(IPainter::StdSettings::STANDARD);
    IPainter::CoordInfo info{0,
                             page.x(),
                             page.y(),
                             page.width(),
                             page.height(),
                             0,
                             0,
                             static_cast<int>(page.width()),
                             static_cast<int>(page.height())};
    painter.SetCoordSystem(IPainter::MapMode::MAP_LOGICAL, &info);
    painter.SetBrush({background, 1});
    painter.FillRect(page.left(), page.top(), page.right(), page.bottom());
    // The outline of a node is filled with the brush: it must not cover the node's own fill.
    painter.SetBrush({});
}

} // namespace nurvex
