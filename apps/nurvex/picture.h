#pragma once

#include "hosts/qt/qt_painter.h"
#include "nurvex7/platform/tamsel7/color.h"

#include <QRectF>
#include <QSizeF>

#include <memory>

namespace nurvex {

/// What can be painted onto any surface, as often as needed.
class Picture {
public:
    Picture() = default;
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;
    virtual ~Picture() = default;

    /// At scale 1; whole units.
    virtual QSizeF GetSize() const = 0;
    /// The typefaces that captions have been measured with, for painters to share.
    virtual const std::shared_ptr<nurvex7::qt::Typesetter>& GetTypesetter() const = 0;
    /// Paints everything, from the corner of the surface.
    virtual void Paint(nurvex7::qt::QtPainter& painter) const = 0;

protected:
    /// Opens the paint bracket, puts the corner of a page into that of the surface, and fills the
    /// page. Space: graph
    static void BeginPage(nurvex7::qt::QtPainter& painter, const QRectF& page,
                          const tamsel7::_color& background);
};

} // namespace nurvex
