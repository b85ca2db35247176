#pragma once

#include "hosts/qt/qt_painter.h"

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
};

} // namespace nurvex
