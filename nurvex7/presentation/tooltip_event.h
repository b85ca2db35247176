#pragma once

#include "nurvex7/platform/tamsel7/geometry.h"
#include "nurvex7/platform/tamsel7/tools.h"

#include <string>

namespace nurvex7 {

/// A tooltip question in graph coordinates. The viewer fills it, a handler answers in it.
struct CGraphTooltipEvent {
    /// A rectangle by two corners.
    struct corners {
        tamsel7::point<double> first;
        tamsel7::point<double> second;
    };

    tamsel7::point<double> pos; ///< pointer position; graph
    corners hot_rect;           ///< where the tooltip stays valid; graph; a handler may fill it
    corners second_rect;        ///< carried to and fro
    std::string text;           ///< set by the handler
    bool visible = false;       ///< carried to and fro
    tamsel7::_color text_color; ///< carried to and fro
    tamsel7::_color back_color; ///< carried to and fro
    tamsel7::font tip_font;     ///< carried to and fro
};

} // namespace nurvex7
