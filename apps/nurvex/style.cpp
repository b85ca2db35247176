#include "apps/nurvex/style.h"

#include "nurvex7/model/queries.h"

#include <utility>

namespace nurvex {

using namespace nurvex7;
using tamsel7::_color;

/// The look of rectangles, which measures leaves that were given a size by that.
class Style::NodeHandler : public SimpleNodeHandler {
public:
    explicit NodeHandler(std::shared_ptr<const Sizes> sizes) : given_sizes(std::move(sizes)) {}

    tamsel7::size<double> GetSize(Node node) override {
        const auto given = given_sizes->find(node.GetID());
        const bool counts = given != given_sizes->end() && node.GetOwned().GetCount() == 0;
        return counts ? given->second : SimpleNodeHandler::GetSize(node);
    }
    using SimpleNodeHandler::GetSize;

private:
    std::shared_ptr<const Sizes> given_sizes;
};

Style::Style(Theme theme) {
    const Palette palette = PaletteOf(theme);
    background = palette.background;
    leaf = {make_handler(palette.leaf, palette.caption, LEAF_CAPTION),
            make_handler(palette.accent, palette.caption, LEAF_CAPTION)};
    for (const Look& look : palette.clusters) {
        clusters.push_back({make_handler(look, palette.cluster_caption, CLUSTER_CAPTION),
                            make_handler({look.fill, palette.accent.border},
                                         palette.cluster_caption, CLUSTER_CAPTION)});
    }
    edge = make_edge_handler(palette.edge);
    accented_edge = make_edge_handler(palette.accent.border);
}

Style::~Style() = default;

graph_ptr2<Style::NodeHandler> Style::make_handler(const Look& look, const _color& caption,
                                                   int longest_caption) const {
    graph_ptr2<NodeHandler> handler(new NodeHandler(given_sizes), /*owns=*/true);
    CNodeDrawInfo& info = handler->drawer.info;
    info.node_font = CaptionFont();
    info.max_caption_chars = longest_caption;
    info.fill_color_1 = info.fill_color_2 = look.fill;
    info.border_color = look.border;
    info.caption_color = caption;
    return handler;
}

Style::EdgeHandler Style::make_edge_handler(_color color) {
    EdgeHandler handler(new DummyEdgeHandler, /*owns=*/true);
    handler->edge_color = color;
    return handler;
}

void Style::Dress(const graph_ptr2<Graph>& graph, tamsel7::IPainter* measuring_painter) const {
    leaf.usual->drawer.SetIPainter(measuring_painter);
    std::vector<graph_ptr2<INodeHandler>> by_depth;
    for (const Wardrobe& cluster : clusters) {
        cluster.usual->drawer.SetIPainter(measuring_painter);
        by_depth.emplace_back(cluster.usual);
    }
    DressNodes(graph, leaf.usual, by_depth);
    graph->SetDefaultEdgeHandler(edge);
}

void Style::SetSize(const Node& node, tamsel7::size<double> size) {
    (*given_sizes)[node.GetID()] = size;
}

graph_ptr2<Style::NodeHandler> Style::accented_for(const Node& node) const {
    const graph_ptr2<INodeHandler> usual = node.GetHandler();
    for (const Wardrobe& cluster : clusters) {
        if (cluster.usual.get() == usual.get()) {
            return cluster.accented;
        }
    }
    return leaf.accented;
}

void Style::Draw(const Node& node, tamsel7::IPainter* painter, bool accented) const {
    const graph_ptr2<INodeHandler> handler =
        accented ? graph_ptr2<INodeHandler>(accented_for(node)) : node.GetHandler();
    handler->SetZoomFactor(1);
    handler->Draw(node, painter);
}

void Style::Draw(const Edge& drawn, tamsel7::IPainter* painter, bool accented) const {
    const graph_ptr2<IEdgeHandler> handler =
        accented ? graph_ptr2<IEdgeHandler>(accented_edge) : drawn.GetHandler();
    handler->SetZoomFactor(1);
    handler->Draw(drawn, painter);
}

} // namespace nurvex
