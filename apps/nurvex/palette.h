#pragma once

#include "nurvex7/model/graph.h"
#include "nurvex7/platform/tamsel7/color.h"
#include "nurvex7/platform/tamsel7/tools.h"
#include "nurvex7/presentation/inode_handler.h"

#include <array>
#include <cstddef>
#include <vector>

namespace nurvex {

enum class Theme { LIGHT, DARK };

/// How many depths of nested clusters have colours of their own.
constexpr std::size_t DEPTHS = 4;

/// Letters of a caption that are shown. A leaf is as wide as its caption, so there has to be an
/// end; a cluster is as wide as what it owns, and the painter cuts its caption to that.
constexpr int LEAF_CAPTION = 32;
constexpr int CLUSTER_CAPTION = 256;

struct Look {
    tamsel7::_color fill;
    tamsel7::_color border;
};

/// The colours of a drawing, on paper and in the window.
struct Palette {
    tamsel7::_color background;
    tamsel7::_color caption;
    tamsel7::_color cluster_caption;
    tamsel7::_color edge;
    Look leaf;
    Look accent;   ///< what a picture points out
    Look fresh;    ///< came back from being folded away
    Look selected; ///< by the user
    Look hovered;  ///< under the pointer; its border is that of edges too
    tamsel7::_color open_port;
    tamsel7::_color closed_port;
    tamsel7::_color partial_port;
    std::array<Look, DEPTHS> clusters; ///< from the outermost inwards
};

Palette PaletteOf(Theme theme);

/// The font of all captions.
tamsel7::font CaptionFont();

/// Gives every cluster the handler of its depth, outermost first, and every leaf the graph's
/// default one. The two innermost handlers take turns in clusters that are nested deeper than that.
///
/// Duty    at least two handlers
void DressNodes(const nurvex7::graph_ptr2<nurvex7::Graph>& graph,
                const nurvex7::graph_ptr2<nurvex7::INodeHandler>& leaf,
                const std::vector<nurvex7::graph_ptr2<nurvex7::INodeHandler>>& clusters);

} // namespace nurvex
