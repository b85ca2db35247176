#include "apps/nurvex/view_handlers.h"

#include "apps/nurvex/caption_text.h"
#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"
#include "nurvex7/platform/tamsel7/painter.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

namespace nurvex {

using namespace nurvex7;
using tamsel7::_color;
using tamsel7::rectangle;

namespace {

// All in heights of the node.
constexpr double ROOM_OF_PORTS = 2.0; ///< what both take of its width
constexpr double PORT = 0.7;          ///< across
constexpr double SYMBOL = 0.17;       ///< from the middle of a port to the end of a stroke
constexpr double ROUNDING = 0.18;     ///< radius of the body's corners

/// Lower nodes are blots of colour: their captions and ports could not be told apart. Pixels.
constexpr double LOWEST_IN_FULL = 6;

/// What is shaped of a leaf's caption, in bytes: more than finds room, in any script.
constexpr std::size_t LEAF_BYTES = 4 * LEAF_CAPTION;

// A tooltip stays on the screen, whatever stands in the file. Letters.
constexpr std::size_t TIP_CAPTION = 500;
constexpr std::size_t TIP_LINE = 80;

std::string name_of(const Node& node) {
    const std::string caption = node.GetCaption();
    return caption.empty() ? "(no caption)" : Shorten(caption, TIP_CAPTION);
}

/// A line of its own, such as "3 children, 2 of them folded away"; nothing where there are none.
std::string neighbours_in_words(const char* one, const char* many, int all, int shown) {
    if (all == 0) {
        return {};
    }
    std::string line = "\n" + std::to_string(all) + " " + (all == 1 ? one : many);
    if (shown == 0) {
        line += ", folded away";
    } else if (shown < all) {
        line += ", " + std::to_string(all - shown) + " of them folded away";
    }
    return line;
}

tamsel7::pen pen_of(const _color& color, double width) {
    return {color, std::max(1, static_cast<int>(std::lround(width))), 1, 0, 0};
}

tamsel7::brush brush_of(const _color& color) {
    return {color, 1, 0, 0, 0};
}

_color readable_on(const _color& ground, const _color& dark, const _color& light) {
    const int brightness = (299 * ground.red + 587 * ground.green + 114 * ground.blue) / 1000;
    constexpr int middle = 140;
    return brightness < middle ? light : dark;
}

} // namespace

/// Draws one leaf.
class ViewNodeHandler::LeafPainter {
public:
    LeafPainter(const Palette& colours, const CPortNodeDrawInfo& node_info, const Node& leaf,
                tamsel7::IPainter& on, bool shows_pointer)
        : palette(colours), info(node_info), node(leaf), painter(on),
          hovered(shows_pointer && IsFlagSet(leaf, NODE_HOVERED)),
          place(MakeDRect(leaf.GetPosition(), leaf.GetSize())), height(place.bottom - place.top) {}

    bool IsTiny() const { return height * info.zoom < LOWEST_IN_FULL; }

    /// At least a pixel, so that none is lost.
    void DrawBlock() {
        const double pixel = 1 / info.zoom;
        painter.SetBrush(brush_of(lasting_look().border));
        painter.FillRect(place.left, place.top, std::max(place.right, place.left + pixel),
                         std::max(place.bottom, place.top + pixel));
    }

    void DrawInFull() {
        const Look look = find_look();
        // The ports sit on the ends of the body, by half their breadth.
        const double end = height * PORT / 2;
        painter.SetPen(pen_of(look.border, info.border_width));
        painter.SetBrush(brush_of(look.fill));
        painter.RoundRect(place.left + end, place.top, place.right - end, place.bottom,
                          height * ROUNDING, height * ROUNDING);
        painter.SetTextColor(info.caption_color);
        const double beside = height * ROOM_OF_PORTS / 2;
        painter.DrawString({place.left + beside, place.top, place.right - beside, place.bottom},
                           CutToBytes(node.GetCaption(), LEAF_BYTES),
                           tamsel7::IPainter::FORMAT_CENTRED, -1);
        draw_port(place.left + end, info.left_port_state, -1, look.border);
        draw_port(place.right - end, info.right_port_state, 1, look.border);
    }

private:
    const Look& lasting_look() const {
        return IsFlagSet(node, NODE_SELECTED) ? palette.selected
               : IsFlagSet(node, NODE_NEW)    ? palette.fresh
                                              : palette.leaf;
    }

    Look find_look() const {
        const Look& usual = lasting_look();
        if (!hovered) {
            return usual;
        }
        const bool plain = &usual == &palette.leaf;
        return {plain ? palette.hovered.fill : usual.fill, palette.hovered.border};
    }

    /// A minus where all neighbours are shown, a plus where none is, and an arrow head that points
    /// to them where some are. `outwards` is the direction in which they lie.
    void draw_port(double middle, int state, int outwards, const _color& border) {
        const bool hidden = (state & PORT_ALL_HIDDEN) != 0;
        const bool partly = (state & PORT_PARTLY_VISIBLE) != 0;
        if (!hidden && !partly && (state & PORT_ALL_VISIBLE) == 0) {
            return;
        }
        _color ground = hidden   ? palette.closed_port
                        : partly ? palette.partial_port
                                 : palette.open_port;
        if ((state & PORT_PRESSED) != 0) {
            ground = tamsel7::lighten(ground);
        }
        const double radius = height * PORT / 2;
        const double y = (place.top + place.bottom) / 2;
        painter.SetPen(pen_of(border, info.border_width));
        painter.SetBrush(brush_of(ground));
        painter.RoundRect(middle - radius, y - radius, middle + radius, y + radius, radius, radius);
        const double arm = height * SYMBOL;
        painter.SetPen(pen_of(readable_on(ground, {24, 34, 48}, {255, 255, 255}), info.zoom));
        if (partly) {
            const double tip = outwards * arm / 2;
            draw_stroke({{middle - tip, y - arm}, {middle + tip, y}, {middle - tip, y + arm}});
            return;
        }
        draw_stroke({{middle - arm, y}, {middle + arm, y}});
        if (hidden) {
            draw_stroke({{middle, y - arm}, {middle, y + arm}});
        }
    }

    void draw_stroke(const std::vector<tamsel7::point<double>>& points) {
        painter.MoveTo(points.front().x, points.front().y);
        for (const tamsel7::point<double>& p : points) {
            painter.LineTo(p.x, p.y);
        }
    }

    const Palette& palette;
    const CPortNodeDrawInfo& info;
    const Node& node;
    tamsel7::IPainter& painter;
    const bool hovered;
    const rectangle<double> place;
    const double height;
};

ViewNodeHandler::ViewNodeHandler(int longest_caption) {
    CPortNodeDrawInfo& info = drawer.info;
    info.node_font = CaptionFont();
    info.max_caption_chars = longest_caption;
    info.fixed_width = false;
}

void ViewNodeHandler::SetColours(const Palette& given, const Look& usual, const _color& caption) {
    palette = given;
    CPortNodeDrawInfo& info = drawer.info;
    info.fill_color_1 = info.fill_color_2 = usual.fill;
    info.border_color = usual.border;
    info.caption_color = caption;
}

void ViewNodeHandler::Draw(Node node, tamsel7::IPainter* painter) {
    if (painter == nullptr || IsRoot(node)) {
        return; // the root is the ground of it all
    }
    if (node.GetOwned().GetCount() > 0) {
        set_font(*painter);
        FoldHandler::Draw(node, painter);
    } else if (IsFlagSet(node, NODE_DRAWN)) {
        LeafPainter leaf(palette, drawer.info, node, *painter, shows_pointer);
        if (leaf.IsTiny()) {
            leaf.DrawBlock();
            return;
        }
        set_font(*painter);
        set_port_states(node);
        leaf.DrawInFull();
    }
}

/// Near scale 1 drawers take the font that the painter has: here it always has the right one.
void ViewNodeHandler::set_font(tamsel7::IPainter& painter) const {
    tamsel7::font scaled = drawer.info.node_font;
    scaled.factor = drawer.info.zoom;
    painter.SetFont(scaled);
}

void ViewNodeHandler::measure_at_scale_1() {
    if (drawer.info.painter != nullptr) {
        drawer.info.painter->SetFont(drawer.info.node_font);
    }
    drawer.info.zoom = 1.0;
}

tamsel7::size<double> ViewNodeHandler::GetSize(Node node) {
    measure_at_scale_1();
    tamsel7::size<double> size = FoldHandler::GetSize(node);
    size.width += size.height * ROOM_OF_PORTS;
    return size;
}

SizeAndOrigin ViewNodeHandler::GetSize(Node node, tamsel7::size<double> inner) {
    measure_at_scale_1();
    return FoldHandler::GetSize(node, inner);
}

int ViewNodeHandler::HandleOnTooltip(Node node, CGraphTooltipEvent* event) {
    if (IsRoot(node)) {
        return HANDLED_NOTHING; // one that owns nothing is no leaf either
    }
    const int result = FoldHandler::HandleOnTooltip(node, event);
    if (result != HANDLED_NOTHING) {
        event->text = BreakIntoLines(name_of(node), TIP_LINE);
        event->text += neighbours_in_words("parent", "parents", CountAllParents(node),
                                           CountVisibleParents(node));
        event->text += neighbours_in_words("child", "children", CountAllChildren(node),
                                           CountVisibleChildren(node));
    }
    return result;
}

void ViewNodeHandler::Forget() {
    pressed_nodes.clear();
    last_node.clear();
    left_port_pressed = right_port_pressed = false;
}

void ViewNodeHandler::HandleFolded(const Node& node, const std::vector<VisibilityChange>& changes) {
    if (on_folded) {
        on_folded(node, changes);
    }
}

void ViewEdgeHandler::Draw(Edge edge, tamsel7::IPainter* painter) {
    if (!IsFlagSet(edge, EDGE_HOVERED)) {
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
    event->text = BreakIntoLines(
        event->text.empty() ? ends : Shorten(event->text, TIP_CAPTION) + "\n" + ends, TIP_LINE);
    return result;
}

} // namespace nurvex
