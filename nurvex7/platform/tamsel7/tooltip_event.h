#pragma once

#include "nurvex7/platform/tamsel7/geometry.h"
#include "nurvex7/platform/tamsel7/tools.h"

#include <string>

namespace tamsel7 {

/// A tooltip question to an element, and its answer: the event with a text in it.
///
/// Space   pixels of the element that is asked
struct CTooltipEvent {
    int kind = 0;           ///< the dispatcher's own
    void* sender = nullptr; ///< the dispatcher's own
    point<int> pos;         ///< where the pointer rests
    rectangle<int>
        hot_rect; ///< the tooltip stays while the pointer is in it; empty: in the element
    rectangle<int> second_rect; ///< carried to and fro
    std::string text;           ///< set by who answers; without it no tooltip appears
    bool visible = false;       ///< true while a tooltip is up
    _color text_color;          ///< a default colour leaves it to the host
    _color back_color;          ///< likewise
    font tip_font;              ///< size 0 leaves it to the host
};

} // namespace tamsel7
