#include "apps/nurvex/style.h"

#include "nurvex7/model/queries.h"

#include <utility>

namespace nurvex {

using namespace nurvex7;
using tamsel7::_color;

namespace {

/// Letters of a caption that are shown. A leaf is as wide as its caption, so there has to be an
/// end; a cluster is as wide as what it owns, and the painter cuts its caption to that.
constexpr int LEAF_CAPTION = 32;
constexpr int CLUSTER_CAPTION = 256;

struct Palette {
    _color background;
    _color leaf_fill;
    _color leaf_border;
    _color caption;
    _color cluster_caption;
    _color edge;
    _color accent;
    _color accent_fill;
    /// Fill and border of clusters, from the outermost inwards.
    std::vector<std::pair<_color, _color>> clusters;
};

Palette light() {
    return {{255, 255, 255},
            {252, 253, 254},
            {105, 120, 142},
            {24, 34, 48},
            {78, 93, 114},
            {122, 137, 158},
            {196, 104, 22},
            {255, 241, 219},
            {{{244, 247, 250}, {201, 211, 223}},
             {{233, 238, 245}, {186, 198, 213}},
             {{221, 228, 238}, {170, 184, 202}},
             {{209, 218, 231}, {154, 170, 191}}}};
}

Palette dark() {
    return {{17, 22, 29},
            {45, 56, 71},
            {112, 130, 154},
            {233, 239, 246},
            {158, 174, 194},
            {118, 134, 156},
            {232, 163, 74},
            {84, 61, 28},
            {{{23, 30, 40}, {52, 64, 80}},
             {{30, 39, 51}, {61, 75, 93}},
             {{37, 48, 62}, {70, 86, 106}},
             {{44, 57, 73}, {79, 97, 119}}}};
}

} // namespace

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
    const Palette palette = theme == Theme::DARK ? dark() : light();
    background = palette.background;
    leaf = {make_handler({palette.leaf_fill, palette.leaf_border, palette.caption}, LEAF_CAPTION),
            make_handler({palette.accent_fill, palette.accent, palette.caption}, LEAF_CAPTION)};
    for (const auto& [fill, border] : palette.clusters) {
        clusters.push_back(
            {make_handler({fill, border, palette.cluster_caption}, CLUSTER_CAPTION),
             make_handler({fill, palette.accent, palette.cluster_caption}, CLUSTER_CAPTION)});
    }
    edge = make_edge_handler(palette.edge);
    accented_edge = make_edge_handler(palette.accent);
}

Style::~Style() = default;

tamsel7::font Style::GetFont() const {
    return {"Arial", 4, 8, 0, 0, 1.0};
}

graph_ptr2<Style::NodeHandler> Style::make_handler(const Look& look, int longest_caption) const {
    graph_ptr2<NodeHandler> handler(new NodeHandler(given_sizes), /*owns=*/true);
    CNodeDrawInfo& info = handler->drawer.info;
    info.node_font = GetFont();
    info.max_caption_chars = longest_caption;
    info.fill_color_1 = info.fill_color_2 = look.fill;
    info.border_color = look.border;
    info.caption_color = look.caption;
    return handler;
}

Style::EdgeHandler Style::make_edge_handler(_color color) {
    EdgeHandler handler(new DummyEdgeHandler, /*owns=*/true);
    handler->edge_color = color;
    return handler;
}

/// The two innermost looks take turns in clusters that are nested deeper than there are looks.
const Style::Wardrobe& Style::cluster_wardrobe(std::size_t depth) const {
    const std::size_t count = clusters.size();
    return clusters[depth < count ? depth : count - 1 - (depth - count + 1) % 2];
}

void Style::Dress(const graph_ptr2<Graph>& graph, tamsel7::IPainter* measuring_painter) const {
    leaf.usual->drawer.SetIPainter(measuring_painter);
    for (const Wardrobe& cluster : clusters) {
        cluster.usual->drawer.SetIPainter(measuring_painter);
    }
    graph->SetDefaultNodeHandler(leaf.usual);
    graph->SetDefaultEdgeHandler(edge);
    std::unordered_map<int, std::size_t> depth_inside{{graph->GetRoot().GetID(), 0}};
    ForEachNodeIn(
        graph->GetRoot(),
        [&](Node node) {
            if (node.GetOwned().GetCount() > 0) {
                const std::size_t depth = depth_inside[node.GetOwner().GetID()];
                depth_inside[node.GetID()] = depth + 1;
                node.SetHandler(cluster_wardrobe(depth).usual);
            } else if (node.GetHandler().get() != leaf.usual.get()) {
                node.SetHandler(leaf.usual); // a cluster that lost all that it owned
            }
        },
        /*post_order=*/false, /*include_self=*/false);
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
