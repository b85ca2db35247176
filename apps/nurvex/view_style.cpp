#include "apps/nurvex/view_style.h"

#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"
#include "nurvex7/platform/tamsel7/painter.h"

#include <array>
#include <cstddef>
#include <unordered_map>

namespace nurvex {

using namespace nurvex7;
using tamsel7::_color;

namespace {

/// Letters of a caption that are shown. A leaf is as wide as its caption, so there has to be an
/// end; a cluster is as wide as what it owns, and the painter cuts its caption to that.
constexpr int LEAF_CAPTION = 32;
constexpr int CLUSTER_CAPTION = 256;
/// What the two ports take of a node's width, in heights of the node.
constexpr double ROOM_OF_PORTS = 2.2;
constexpr std::size_t DEPTHS = 4;

struct Look {
    _color fill;
    _color border;
};

struct Palette {
    _color background;
    Look leaf;
    _color caption;
    Look fresh; ///< came back from being folded away
    Look selected;
    _color cluster_caption;
    _color edge;
    _color edge_hovered;
    _color open_port;
    _color closed_port;
    _color partial_port;
    std::array<Look, DEPTHS> clusters; ///< from the outermost inwards
};

Palette light() {
    return {{255, 255, 255},
            {{236, 241, 248}, {105, 120, 142}},
            {24, 34, 48},
            {{214, 234, 222}, {105, 120, 142}},
            {{255, 214, 138}, {105, 120, 142}},
            {78, 93, 114},
            {122, 137, 158},
            {29, 104, 205},
            {208, 219, 232},
            {150, 176, 214},
            {226, 213, 175},
            {{{{247, 249, 251}, {201, 211, 223}},
              {{238, 242, 247}, {186, 198, 213}},
              {{227, 233, 241}, {170, 184, 202}},
              {{215, 223, 234}, {154, 170, 191}}}}};
}

Palette dark() {
    return {{17, 22, 29},
            {{45, 56, 71}, {112, 130, 154}},
            {233, 239, 246},
            {{36, 74, 60}, {112, 130, 154}},
            {{122, 88, 24}, {112, 130, 154}},
            {158, 174, 194},
            {118, 134, 156},
            {112, 172, 250},
            {58, 72, 91},
            {62, 99, 150},
            {104, 92, 52},
            {{{{23, 30, 40}, {52, 64, 80}},
              {{30, 39, 51}, {61, 75, 93}},
              {{37, 48, 62}, {70, 86, 106}},
              {{44, 57, 73}, {79, 97, 119}}}}};
}

void colour(ViewNodeHandler& handler, const Palette& palette, const Look& look,
            const _color& caption) {
    CPortNodeDrawInfo& info = handler.drawer.info;
    info.fill_color_1 = info.fill_color_2 = look.fill;
    info.border_color = look.border;
    info.caption_color = caption;
    info.selected_fill_color_1 = info.selected_fill_color_2 = palette.selected.fill;
    info.new_fill_color_1 = info.new_fill_color_2 = palette.fresh.fill;
    info.highlight_color = palette.edge_hovered;
    info.port_open_color = palette.open_port;
    info.port_closed_color = palette.closed_port;
    info.port_partial_color = palette.partial_port;
}

graph_ptr2<ViewNodeHandler> make_handler(int longest_caption) {
    graph_ptr2<ViewNodeHandler> handler(new ViewNodeHandler, /*owns=*/true);
    CPortNodeDrawInfo& info = handler->drawer.info;
    info.node_font = {"Arial", 4, 8, 0, 0, 1.0};
    info.max_caption_chars = longest_caption;
    info.fixed_width = false;
    return handler;
}

std::string name_of(const Node& node) {
    const std::string caption = node.GetCaption();
    return caption.empty() ? "(no caption)" : caption;
}

} // namespace

// The handlers

/// Near scale 1 drawers take the font that the painter has: here it always has the right one.
void ViewNodeHandler::Draw(Node node, tamsel7::IPainter* painter) {
    if (painter != nullptr) {
        tamsel7::font scaled = drawer.info.node_font;
        scaled.factor = drawer.info.zoom;
        painter->SetFont(scaled);
    }
    FoldHandler::Draw(node, painter);
}

tamsel7::size<double> ViewNodeHandler::GetSize(Node node) {
    if (drawer.info.painter != nullptr) {
        drawer.info.painter->SetFont(drawer.info.node_font);
    }
    drawer.info.zoom = 1.0;
    tamsel7::size<double> size = FoldHandler::GetSize(node);
    size.width += size.height * ROOM_OF_PORTS;
    return size;
}

SizeAndOrigin ViewNodeHandler::GetSize(Node node, tamsel7::size<double> inner) {
    if (drawer.info.painter != nullptr) {
        drawer.info.painter->SetFont(drawer.info.node_font);
    }
    drawer.info.zoom = 1.0;
    return FoldHandler::GetSize(node, inner);
}

void ViewNodeHandler::HandleFolded(const Node& node, const std::vector<VisibilityChange>& changes) {
    if (on_folded) {
        on_folded(node, changes);
    }
}

void ViewEdgeHandler::Draw(Edge edge, tamsel7::IPainter* painter) {
    const bool hovered = IsFlagSet(edge, EDGE_HOVERED);
    if (!hovered) {
        DummyEdgeHandler::Draw(edge, painter);
        return;
    }
    // The usual line becomes paler under the pointer, which on a light ground hides it.
    const _color usual = edge_color;
    const int usual_width = line_width;
    SetFlag(edge, EDGE_HOVERED, false);
    edge_color = hover_color;
    line_width = usual_width + 1;
    DummyEdgeHandler::Draw(edge, painter);
    edge_color = usual;
    line_width = usual_width;
    SetFlag(edge, EDGE_HOVERED, true);
}

int ViewEdgeHandler::HandleOnTooltip(Edge edge, CGraphTooltipEvent* event) {
    const int result = DummyEdgeHandler::HandleOnTooltip(edge, event);
    const std::string ends = name_of(edge.From()) + " \u2192 " + name_of(edge.To());
    event->text = event->text.empty() ? ends : event->text + "\n" + ends;
    return result;
}

// The style

ViewStyle::ViewStyle(Theme theme)
    : leaf(make_handler(LEAF_CAPTION)), edge(new ViewEdgeHandler, /*owns=*/true) {
    for (std::size_t depth = 0; depth < DEPTHS; ++depth) {
        clusters.push_back(make_handler(CLUSTER_CAPTION));
    }
    SetTheme(theme);
}

void ViewStyle::SetTheme(Theme theme) {
    const Palette palette = theme == Theme::DARK ? dark() : light();
    background = palette.background;
    colour(*leaf, palette, palette.leaf, palette.caption);
    for (std::size_t depth = 0; depth < DEPTHS; ++depth) {
        colour(*clusters[depth], palette, palette.clusters[depth], palette.cluster_caption);
    }
    edge->edge_color = palette.edge;
    edge->hover_color = palette.edge_hovered;
    edge->highlight_color = palette.edge_hovered;
}

void ViewStyle::SetFolded(const ViewNodeHandler::Folded& told) {
    leaf->on_folded = told;
    for (const NodeHandler& cluster : clusters) {
        cluster->on_folded = told;
    }
}

/// The two innermost looks take turns in clusters that are nested deeper than there are looks.
const ViewStyle::NodeHandler& ViewStyle::cluster_handler(std::size_t depth) const {
    return clusters[depth < DEPTHS ? depth : DEPTHS - 1 - (depth - DEPTHS + 1) % 2];
}

void ViewStyle::Dress(const graph_ptr2<Graph>& graph, tamsel7::IPainter* measuring_painter) const {
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

void ViewStyle::Undress(const graph_ptr2<Graph>& graph) const {
    ForEachNodeIn(
        graph->GetRoot(),
        [](Node node) {
            if (node.GetOwned().GetCount() > 0) {
                node.SetHandler(GetDefaultNodeHandler());
            }
        },
        /*post_order=*/false, /*include_self=*/false);
}

} // namespace nurvex
