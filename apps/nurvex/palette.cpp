#include "apps/nurvex/palette.h"

#include "nurvex7/model/queries.h"

#include <unordered_map>

namespace nurvex {

using namespace nurvex7;

namespace {

Palette light() {
    Palette colours;
    colours.background = {255, 255, 255};
    colours.caption = {24, 34, 48};
    colours.cluster_caption = {78, 93, 114};
    colours.edge = {122, 137, 158};
    colours.leaf = {{252, 253, 254}, {105, 120, 142}};
    colours.accent = {{255, 241, 219}, {196, 104, 22}};
    colours.fresh = {{219, 241, 226}, {62, 142, 94}};
    colours.selected = {{255, 226, 163}, {190, 128, 16}};
    colours.hovered = {{226, 238, 253}, {29, 104, 205}};
    colours.open_port = {228, 234, 242};
    colours.closed_port = {46, 108, 190};
    colours.partial_port = {240, 192, 92};
    colours.clusters = {{{{244, 247, 250}, {201, 211, 223}},
                         {{233, 238, 245}, {186, 198, 213}},
                         {{221, 228, 238}, {170, 184, 202}},
                         {{209, 218, 231}, {154, 170, 191}}}};
    return colours;
}

Palette dark() {
    Palette colours;
    colours.background = {17, 22, 29};
    colours.caption = {233, 239, 246};
    colours.cluster_caption = {158, 174, 194};
    colours.edge = {118, 134, 156};
    colours.leaf = {{45, 56, 71}, {112, 130, 154}};
    colours.accent = {{84, 61, 28}, {232, 163, 74}};
    colours.fresh = {{32, 70, 54}, {92, 178, 128}};
    colours.selected = {{108, 78, 22}, {226, 172, 72}};
    colours.hovered = {{48, 72, 104}, {112, 172, 250}};
    colours.open_port = {62, 76, 95};
    colours.closed_port = {70, 134, 220};
    colours.partial_port = {206, 160, 66};
    colours.clusters = {{{{23, 30, 40}, {52, 64, 80}},
                         {{30, 39, 51}, {61, 75, 93}},
                         {{37, 48, 62}, {70, 86, 106}},
                         {{44, 57, 73}, {79, 97, 119}}}};
    return colours;
}

} // namespace

Palette PaletteOf(Theme theme) {
    return theme == Theme::DARK ? dark() : light();
}

tamsel7::font CaptionFont() {
    return {"Arial", 4, 8, 0, 0, 1.0};
}

void DressNodes(const graph_ptr2<Graph>& graph, const graph_ptr2<INodeHandler>& leaf,
                const std::vector<graph_ptr2<INodeHandler>>& clusters) {
    graph->SetDefaultNodeHandler(leaf);
    const std::size_t count = clusters.size();
    std::unordered_map<int, std::size_t> depth_inside{{graph->GetRoot().GetID(), 0}};
    ForEachNodeIn(
        graph->GetRoot(),
        [&](Node node) {
            if (node.GetOwned().GetCount() > 0) {
                const std::size_t depth = depth_inside[node.GetOwner().GetID()];
                depth_inside[node.GetID()] = depth + 1;
                node.SetHandler(
                    clusters[depth < count ? depth : count - 1 - (depth - count + 1) % 2]);
            } else if (node.GetHandler().get() != leaf.get()) {
                node.SetHandler(leaf); // a cluster that lost all that it owned
            }
        },
        /*post_order=*/false, /*include_self=*/false);
}

} // namespace nurvex
