#pragma once

#include "nurvex7/platform/brevolt7/element_types.h"
#include "nurvex7/platform/tamsel7/geometry.h"

#include <QKeyEvent>
#include <QPoint>
#include <QRect>
#include <Qt>

#include <optional>

namespace nurvex7::qt {

// What the toolkit calls its input, in the words of the elements.

/// Bits of brevolt7::EventFlags.
int FlagsOf(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers);
/// Buttons beyond the first three are none to elements.
tamsel7::MouseButton ButtonOf(Qt::MouseButton button);
/// A brevolt7::Key, or the code of a letter's capital or of a digit; empty for keys without a code.
std::optional<int> KeyOf(const QKeyEvent& event);
Qt::CursorShape ShapeOf(brevolt7::CursorShape shape);

inline QRect ToQt(const tamsel7::rectangle<int>& r) {
    return QRect(r.left, r.top, r.right - r.left, r.bottom - r.top);
}

} // namespace nurvex7::qt
