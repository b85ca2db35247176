#include "apps/nurvex/view_style.h"

#include "nurvex7/model/queries.h"

#include <cstddef>

namespace nurvex {

using namespace nurvex7;

ViewStyle::ViewStyle(Theme theme)
    : leaf(new ViewNodeHandler(LEAF_CAPTION), /*owns=*/true),
      edge(new ViewEdgeHandler, /*owns=*/true) {
    for (std::size_t depth = 0; depth < DEPTHS; ++depth) {
        clusters.emplace_back(new ViewNodeHandler(CLUSTER_CAPTION), /*owns=*/true);
    }
    SetTheme(theme);
}

void ViewStyle::SetTheme(Theme theme) {
    const Palette palette = PaletteOf(theme);
    background = palette.background;
    leaf->SetColours(palette, palette.leaf, palette.caption);
    for (std::size_t depth = 0; depth < DEPTHS; ++depth) {
        clusters[depth]->SetColours(palette, palette.clusters[depth], palette.cluster_caption);
    }
    edge->edge_color = palette.edge;
    edge->hover_color = palette.hovered.border;
    edge->highlight_color = palette.hovered.border;
}

void ViewStyle::SetFolded(const ViewNodeHandler::Folded& told) {
    leaf->on_folded = told;
    for (const NodeHandler& cluster : clusters) {
        cluster->on_folded = told;
    }
}

void ViewStyle::Dress(const graph_ptr2<Graph>& graph, tamsel7::IPainter* measuring_painter) const {
    leaf->drawer.SetIPainter(measuring_painter);
    std::vector<graph_ptr2<INodeHandler>> by_depth;
    for (const NodeHandler& cluster : clusters) {
        cluster->drawer.SetIPainter(measuring_painter);
        by_depth.emplace_back(cluster);
    }
    DressNodes(graph, leaf, by_depth);
    graph->SetDefaultEdgeHandler(edge);
}

void ViewStyle::Undress(const graph_ptr2<Graph>& graph) const {
    ForEachNodeIn(
        graph->GetRoot(),
        [](Node node) {
            if (node.GetOwned().GetCount() > 0) {
                node.SetHandler(GetDefaultNodeHandler());
            }
        },
        /*post_order=*/false, /*include_self=*/false);
    leaf->Forget();
    for (const NodeHandler& cluster : clusters) {
        cluster->Forget();
    }
}

void ViewStyle::ShowPointer(bool show) const {
    leaf->ShowPointer(show); // clusters do not light up
}

} // namespace nurvex
