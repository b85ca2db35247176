// Events of the element become calls of handlers, and their results repaints.
#include "nurvex7/model/queries.h"
#include "nurvex7/platform/brevolt7/element_ref.h"
#include "nurvex7/viewer/content.h"
#include "nurvex7/viewer/coords_keeper.h"

#include <algorithm>
#include <utility>

namespace nurvex7 {

using brevolt7::CElementRef;
using brevolt7::CVisualElement;
using tamsel7::MouseButton;

namespace {

/// Calls the handler of a node or an edge, and holds it as long: it may be replaced meanwhile.
template <typename Element, typename Handler, typename... Parameters, typename... Arguments>
int ask(const Element& element, int (Handler::*event)(Element, Parameters...),
        Arguments... arguments) {
    const graph_ptr2<Handler> handler = element.GetHandler();
    return handler.get() != nullptr ? (handler.get()->*event)(element, arguments...)
                                    : HANDLED_NOTHING;
}

tamsel7::rectangle<int> normal_rect(const tamsel7::point<int>& a, const tamsel7::point<int>& b) {
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

} // namespace

// Hits

NodeSet CContent::HitNodeTest(int x1, int y1, int x2, int y2) const {
    const position a = ConvertP2L({x1, y1});
    const position b = ConvertP2L({x2, y2});
    return graph->HitNodeTest(a.x, a.y, b.x, b.y);
}

EdgeSet CContent::HitEdgeTest(int x1, int y1, int x2, int y2) const {
    const double more = 1.0 / scale;
    const position a = ConvertP2L({x1, y1});
    const position b = ConvertP2L({x2, y2});
    return graph->HitEdgeTest(a.x - more, a.y - more, b.x + more, b.y + more);
}

Node CContent::find_target(int x, int y) const {
    const Node root = graph->GetRoot();
    NodeSet hits = HitNodeTest(x, y, x, y);
    return hits.GetCount() > 0 && hits.GetItem(0) != root ? hits.GetItem(0) : root;
}

std::optional<Edge> CContent::find_edge_target(int x, int y) const {
    EdgeSet hits = HitEdgeTest(x, y, x, y);
    return hits.GetCount() > 0 ? std::optional<Edge>(hits.GetItem(0)) : std::nullopt;
}

// Results

void CContent::HandleEpilogue(int result) {
    if (result >= HANDLED_REPAINT_ALL) {
        redraw_nodes.clear();
        redraw_edges.clear();
        RenewView(true);
    } else if (result >= HANDLED_REDRAW_NODE) {
        RenewView(false);
    }
}

void CContent::record(int result, const Node& target) {
    if (result == HANDLED_REDRAW_NODE) {
        redraw_nodes.push_back(target);
    }
}

// Buttons

bool CContent::HandleButtonDown(int x, int y, int flags, MouseButton button) {
    const CElementRef self(this);
    press_x = x;
    press_y = y;
    forget_what_is_gone();
    const Node target = find_target(x, y);
    pressed_nodes.push_back(target);
    const position at = ConvertP2L({x, y});
    const position corner = pressed_nodes.front().GetPosition();
    grab_dx = at.x - corner.x;
    grab_dy = at.y - corner.y;
    const int result = ask(target, &INodeHandler::HandleButtonDown, at.x, at.y, flags, button);
    if (self) {
        record(result, target);
        OnButtonDown(this, x, y, flags, button);
    }
    if (self) {
        HandleEpilogue(result);
    }
    // The signal has started the drag too early: whether there is one is up to the result. The
    // dispatcher emits the signal again where this gives false.
    if (self) {
        shift_rubber->EndDragging();
        focus_rubber->EndDragging();
    }
    return result != HANDLED_NOTHING;
}

bool CContent::HandleButtonUp(int x, int y, int flags, MouseButton button) {
    const CElementRef self(this);
    const Node target = find_target(x, y);
    const position at = ConvertP2L({x, y});
    const CoordsKeeper keeper(this, target);
    layout_phase = 0;
    int result = ask(target, &INodeHandler::HandleButtonUp, at.x, at.y, flags, button);
    if (self) {
        record(result, target);
    }
    if (self && shows(target) && !pressed_nodes.empty() && pressed_nodes.front() == target) {
        const int clicked = ask(target, &INodeHandler::HandleClick, at.x, at.y, flags, button);
        if (self) {
            record(clicked, target);
        }
        result |= clicked;
    }
    if (self) {
        pressed_nodes.clear();
        OnButtonUp(this, x, y, flags, button);
    }
    if (self) {
        HandleEpilogue(result);
    }
    if (self) {
        shift_rubber->EndDragging();
    }
    return result != HANDLED_NOTHING;
}

bool CContent::HandleDoubleClick(int x, int y, int flags, MouseButton button) {
    const CElementRef self(this);
    const Node target = find_target(x, y);
    const position at = ConvertP2L({x, y});
    const int result = ask(target, &INodeHandler::HandleDoubleClick, at.x, at.y, flags, button);
    if (self) {
        record(result, target);
        OnDoubleClick(this, x, y, flags, button);
    }
    if (self) {
        HandleEpilogue(result);
    }
    return result != HANDLED_NOTHING;
}

bool CContent::HandleContextMenu(int x, int y) {
    const CElementRef self(this);
    const Node target = find_target(x, y);
    const position at = ConvertP2L({x, y});
    const int result = ask(target, &INodeHandler::HandleContextMenu, at.x, at.y);
    if (self) {
        record(result, target);
        OnContextMenu(this, x, y);
    }
    if (self) {
        HandleEpilogue(result);
    }
    return result != HANDLED_NOTHING;
}

// The pointer over nodes and edges

bool CContent::HandleMouseMove(int /*x*/, int /*y*/, int /*flags*/, MouseButton /*button*/) {
    return true;
}

void CContent::HandleMouseHover(CVisualElement* /*who*/) {}

/// Everything is painted anew, so a frame that stands on the screen is not erased but goes with the
/// rest.
void CContent::HandleMouseLeave(CVisualElement* /*who*/) {
    const CElementRef self(this);
    focus_rubber->erase_by_redraw = false;
    focus_rubber->first_draw = true;
    for (const Node& node : std::exchange(hovered_nodes, {})) {
        if (self && shows(node)) {
            ask(node, &INodeHandler::HandleMouseLeave);
        }
    }
    for (const Edge& edge : self ? std::exchange(hovered_edges, {}) : std::vector<Edge>()) {
        if (self && shows(edge)) {
            ask(edge, &IEdgeHandler::HandleMouseLeave);
        }
    }
    if (self) {
        OnMouseLeave(this);
    }
    if (self) {
        HandleEpilogue(HANDLED_REPAINT_ALL);
    }
    if (self) {
        focus_rubber->erase_by_redraw = true;
        focus_rubber->first_draw = true;
    }
}

// Tooltips

void CContent::ConvertTooltip(tamsel7::CTooltipEvent* from, CGraphTooltipEvent* to) const {
    const auto corners = [this](const tamsel7::rectangle<int>& r) {
        return CGraphTooltipEvent::corners{ConvertP2L({r.left, r.top}),
                                           ConvertP2L({r.right, r.bottom})};
    };
    to->pos = ConvertP2L(from->pos);
    to->hot_rect = corners(from->hot_rect);
    to->second_rect = corners(from->second_rect);
    to->text = from->text;
    to->visible = from->visible;
    to->text_color = from->text_color;
    to->back_color = from->back_color;
    to->tip_font = from->tip_font;
}

void CContent::ConvertTooltip(CGraphTooltipEvent* from, tamsel7::CTooltipEvent* to) const {
    const auto rect = [this](const CGraphTooltipEvent::corners& c) {
        return normal_rect(ConvertL2P(c.first), ConvertL2P(c.second));
    };
    to->pos = ConvertL2P(from->pos);
    to->hot_rect = rect(from->hot_rect);
    to->second_rect = rect(from->second_rect);
    to->text = from->text;
    to->visible = from->visible;
    to->text_color = from->text_color;
    to->back_color = from->back_color;
    to->tip_font = from->tip_font;
}

bool CContent::ask_tooltip(tamsel7::CTooltipEvent* event, node_tooltip of_node,
                           edge_tooltip of_edge, const tooltip_signal& told) {
    const CElementRef self(this);
    const auto ask_in_graph = [&](const auto& element, auto operation) {
        CGraphTooltipEvent in_graph;
        ConvertTooltip(event, &in_graph);
        const int given = ask(element, operation, &in_graph);
        if (self) {
            ConvertTooltip(&in_graph, event);
        }
        return given;
    };
    const tamsel7::point<int> at = event->pos;
    int result = ask_in_graph(find_target(at.x, at.y), of_node);
    if (self && result == HANDLED_NOTHING) {
        if (const std::optional<Edge> edge = find_edge_target(event->pos.x, event->pos.y)) {
            result = ask_in_graph(*edge, of_edge);
        }
    }
    if (self) {
        told(this, event);
    }
    if (self) {
        HandleEpilogue(result);
    }
    return result != HANDLED_NOTHING;
}

bool CContent::HandleOnTooltip(tamsel7::CTooltipEvent* event) {
    return ask_tooltip(event, &INodeHandler::HandleOnTooltip, &IEdgeHandler::HandleOnTooltip,
                       OnTooltip);
}

bool CContent::HandleOnTooltipTrack(tamsel7::CTooltipEvent* event) {
    return ask_tooltip(event, &INodeHandler::HandleOnTooltipTrack,
                       &IEdgeHandler::HandleOnTooltipTrack, OnTooltipTrack);
}

// Keys, focus, things that are dropped

// Deliberate: the left and the upper arrow raise the start.
bool CContent::HandleKeyDown(int /*flags*/, int key) {
    const double step_x = GetHorzStepInPixels() / scale;
    const double step_y = GetVertStepInPixels() / scale;
    switch (key) {
    case brevolt7::KEY_LEFT:
        SetStartX(GetHorzStart() + step_x);
        return true;
    case brevolt7::KEY_RIGHT:
        SetStartX(GetHorzStart() - step_x);
        return true;
    case brevolt7::KEY_UP:
        SetStartY(GetVertStart() + step_y);
        return true;
    case brevolt7::KEY_DOWN:
        SetStartY(GetVertStart() - step_y);
        return true;
    default:
        return false;
    }
}

bool CContent::HandleKeyUp(int /*flags*/, int /*key*/) {
    return false;
}

bool CContent::HandleChar(char /*byte*/) {
    return false;
}

bool CContent::HandleDragOver(CVisualElement* /*source*/, int /*x*/, int /*y*/,
                              brevolt7::DragInfo& /*info*/) {
    return true;
}

bool CContent::HandleDragDrop(CVisualElement* /*source*/, int /*x*/, int /*y*/,
                              brevolt7::DragInfo& /*info*/) {
    return true;
}

void CContent::HandleGetFocus(CVisualElement* who, bool flag) {
    CCentralPart::HandleGetFocus(who, flag);
}

void CContent::HandleLostFocus(CVisualElement* /*who*/) {}

} // namespace nurvex7
