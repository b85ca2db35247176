#include "apps/nurvex/style.h"

#include "nurvex7/model/queries.h"

#include <unordered_map>

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
            {{{23, 30, 40}, {52, 64, 80}},
             {{30, 39, 51}, {61, 75, 93}},
             {{37, 48, 62}, {70, 86, 106}},
             {{44, 57, 73}, {79, 97, 119}}}};
}

} // namespace

Style::Style(Theme theme) {
    const Palette palette = theme == Theme::DARK ? dark() : light();
    background = palette.background;
    leaf = make_handler({palette.leaf_fill, palette.leaf_border, palette.caption}, LEAF_CAPTION);
    for (const auto& [fill, border] : palette.clusters) {
        clusters.push_back(make_handler({fill, border, palette.cluster_caption}, CLUSTER_CAPTION));
    }
    edge = graph_ptr2<DummyEdgeHandler>(new DummyEdgeHandler, /*owns=*/true);
    edge->edge_color = palette.edge;
}

tamsel7::font Style::GetFont() const {
    return {"Arial", 4, 8, 0, 0, 1.0};
}

Style::NodeHandler Style::make_handler(const Look& look, int longest_caption) const {
    NodeHandler handler(new SimpleNodeHandler, /*owns=*/true);
    CNodeDrawInfo& info = handler->drawer.info;
    info.node_font = GetFont();
    info.max_caption_chars = longest_caption;
    info.fill_color_1 = info.fill_color_2 = look.fill;
    info.border_color = look.border;
    info.caption_color = look.caption;
    return handler;
}

/// The two innermost looks take turns in clusters that are nested deeper than there are looks.
const Style::NodeHandler& Style::cluster_handler(std::size_t depth) const {
    const std::size_t count = clusters.size();
    return clusters[depth < count ? depth : count - 1 - (depth - count + 1) % 2];
}

void Style::Dress(const graph_ptr2<Graph>& graph, tamsel7::IPainter* measuring_painter) const {
    leaf->drawer.SetIPainter(measuring_painter);
    for (const NodeHandler& cluster : clusters) {
        cluster->drawer.SetIPainter(measuring_painter);
    }
    graph->SetDefaultNodeHandler(leaf);
    graph->SetDefaultEdgeHandler(edge);
    std::unordered_map<int, std::size_t> depth_inside{{graph->GetRoot().GetID(), 0}};
    ForEachNodeIn(
        graph->GetRoot(),
        [&](Node node) {
            if (node.GetOwned().GetCount() > 0) {
                const std::size_t depth = depth_inside[node.GetOwner().GetID()];
                depth_inside[node.GetID()] = depth + 1;
                node.SetHandler(cluster_handler(depth));
            }
        },
        /*post_order=*/false, /*include_self=*/false);
}

} // namespace nurvex
