#pragma once

#include "nurvex7/export.h"
#include "nurvex7/model/fwd.h"
#include "nurvex7/platform/tamsel7/geometry.h"
#include "nurvex7/platform/tamsel7/tools.h"
#include "nurvex7/presentation/handler_result.h"

#include <string>

namespace tamsel7 {
class IPainter;
}

namespace nurvex7 {

/// The looks of a node drawer, all of them for the application to set, and the measuring of
/// captions that follows from them.
///
/// Duty    `painter` is set before anything is measured; without it all sizes are zero and all
///         captions empty
struct NURVEX7_API CNodeDrawInfo {
    int border_width = 1; ///< pixel
    tamsel7::font node_font{"", 4, 8, 0, 0, 1.0};
    tamsel7::_color caption_color{0, 0, 0};
    tamsel7::_color border_color{0, 0, 0};
    tamsel7::_color fill_color_1{255, 255, 255}; ///< where the gradient begins
    tamsel7::_color fill_color_2{127, 127, 127}; ///< where the gradient ends
    tamsel7::_color selected_fill_color_1{255, 255, 255};
    tamsel7::_color selected_fill_color_2{127, 127, 127};
    tamsel7::_color new_fill_color_1{255, 255, 255};
    tamsel7::_color new_fill_color_2{127, 127, 127};
    tamsel7::_color highlight_color{255, 0, 0};
    int max_caption_chars = 24; ///< longer captions do not make a node wider
    bool fixed_width = false;   ///< every node as wide as max_caption_chars + 2 blanks
    double zoom = 1.0;
    tamsel7::IPainter* painter = nullptr; ///< not owned

    /// Installs `node_font` in the painter, its size times the zoom. Near zoom 1 (0.9 to 1.1) it
    /// installs nothing: the painter keeps the font that it has.
    void SetScaledFont();
    /// The size of a node that shows its caption with some air around it.
    tamsel7::size<double> GetSizeByCaption(Node node);
    /// The caption, cut and ended by full stops where it is wider than GetSizeByCaption allows.
    std::string GetTruncatedCaption(Node node);

private:
    tamsel7::size<double> measure(const std::string& text);
};

/// The size of a cluster with a band above what it owns, and the corner below that band, where
/// `band` is the size that the node wants for its caption.
SizeAndOrigin size_with_band(Node node, tamsel7::size<double> band, tamsel7::size<double> inner);

} // namespace nurvex7
