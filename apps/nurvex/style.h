#pragma once

#include "apps/nurvex/palette.h"
#include "nurvex7/foundation/graph_ptr2.h"
#include "nurvex7/model/graph.h"
#include "nurvex7/platform/tamsel7/color.h"
#include "nurvex7/platform/tamsel7/tools.h"
#include "nurvex7/presentation/dummy_edge_handler.h"
#include "nurvex7/presentation/simple_node_handler.h"

#include <memory>
#include <unordered_map>
#include <vector>

namespace nurvex {

/// The looks of a drawing: colours, and the handlers that draw with them.
class Style {
public:
    explicit Style(Theme theme);
    ~Style();
    Style(const Style&) = delete;
    Style& operator=(const Style&) = delete;

    tamsel7::_color GetBackground() const { return background; }

    /// Gives the nodes and edges of a graph the handlers of this style. They measure with a painter
    /// whose current font is CaptionFont.
    ///
    /// Duty    a graph that changes its clusters is dressed again
    void Dress(const nurvex7::graph_ptr2<nurvex7::Graph>& graph,
               tamsel7::IPainter* measuring_painter) const;

    /// Gives a leaf a size of its own in place of that of its caption. Queues nothing.
    void SetSize(const nurvex7::Node& node, tamsel7::size<double> size);

    /// Draws a node or an edge at scale 1; with an accent, so that it is seen at once.
    /// Duty    the graph has been dressed
    void Draw(const nurvex7::Node& node, tamsel7::IPainter* painter, bool accented) const;
    void Draw(const nurvex7::Edge& edge, tamsel7::IPainter* painter, bool accented) const;

private:
    class NodeHandler;
    using EdgeHandler = nurvex7::graph_ptr2<nurvex7::DummyEdgeHandler>;
    using Sizes = std::unordered_map<int, tamsel7::size<double>>;

    /// What nodes of one kind look like, and with the accent.
    struct Wardrobe {
        nurvex7::graph_ptr2<NodeHandler> usual;
        nurvex7::graph_ptr2<NodeHandler> accented;
    };

    nurvex7::graph_ptr2<NodeHandler> make_handler(const Look& look, const tamsel7::_color& caption,
                                                  int longest_caption) const;
    static EdgeHandler make_edge_handler(tamsel7::_color color);
    nurvex7::graph_ptr2<NodeHandler> accented_for(const nurvex7::Node& node) const;

    tamsel7::_color background;
    std::shared_ptr<Sizes> given_sizes = std::make_shared<Sizes>(); ///< by node id
    Wardrobe leaf;
    std::vector<Wardrobe> clusters; ///< by depth, from the outermost
    EdgeHandler edge;
    EdgeHandler accented_edge;
};

} // namespace nurvex
