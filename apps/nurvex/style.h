#pragma once

#include "nurvex7/foundation/graph_ptr2.h"
#include "nurvex7/model/graph.h"
#include "nurvex7/platform/tamsel7/color.h"
#include "nurvex7/platform/tamsel7/tools.h"
#include "nurvex7/presentation/dummy_edge_handler.h"
#include "nurvex7/presentation/simple_node_handler.h"

#include <vector>

namespace nurvex {

/// The looks of a drawing: colours, and the handlers that draw with them.
class Style {
public:
    enum class Theme { LIGHT, DARK };

    explicit Style(Theme theme);

    tamsel7::_color GetBackground() const { return background; }
    /// The font of all captions.
    tamsel7::font GetFont() const;

    /// Gives the nodes and edges of a graph the handlers of this style. They measure with a painter
    /// whose current font is GetFont.
    ///
    /// Duty    a graph that changes its clusters is dressed again
    void Dress(const nurvex7::graph_ptr2<nurvex7::Graph>& graph,
               tamsel7::IPainter* measuring_painter) const;

private:
    using NodeHandler = nurvex7::graph_ptr2<nurvex7::SimpleNodeHandler>;

    struct Look {
        tamsel7::_color fill;
        tamsel7::_color border;
        tamsel7::_color caption;
    };

    NodeHandler make_handler(const Look& look, int longest_caption) const;
    const NodeHandler& cluster_handler(std::size_t depth) const;

    tamsel7::_color background;
    NodeHandler leaf;
    std::vector<NodeHandler> clusters; ///< by depth, from the outermost
    nurvex7::graph_ptr2<nurvex7::DummyEdgeHandler> edge;
};

} // namespace nurvex
