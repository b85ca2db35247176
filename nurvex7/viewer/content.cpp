// The graph that is shown, and the settings.
#include "nurvex7/viewer/content.h"

#include "nurvex7/model/queries.h"
#include "nurvex7/platform/brevolt7/element_ref.h"
#include "nurvex7/viewer/coords_keeper.h"
#include "nurvex7/viewer/graph_or_empty.h"

#include <algorithm>

namespace nurvex7 {

using brevolt7::Alignment;
using brevolt7::CElementRef;

namespace {

/// Keeps what passes a test. Handles of equal ids refuse to be assigned, so they are copied into a
/// list of their own.
template <typename T, typename Test>
void keep_if(std::vector<T>& items, Test test) {
    std::vector<T> kept;
    std::copy_if(items.begin(), items.end(), std::back_inserter(kept), test);
    items.swap(kept);
}

} // namespace

CContent::CContent(brevolt7::CVisualElement* parent_element, graph_ptr2<Graph> shown_graph,
                   bool needs_coord_system)
    : CCentralPart(parent_element, {40, 40}, Alignment::ALIGN_FILL),
      graph(graph_or_empty(shown_graph)), need_coord_system(needs_coord_system) {
    focus_rubber = new frame_rubber(this);
    shift_rubber = new drag_rubber(this);
    shift_rubber->drag_enabled = true;
    shift_rubber->sig_move.connect(this, &CContent::ShiftProcessing);
    shift_rubber->sig_finish.connect(this, &CContent::EndShiftProcessing);
    shift_rubber->sig_cancel.connect(this, &CContent::CancelShiftProcessing);
    focus_rubber->drag_enabled = false;
    focus_rubber->sig_finish.connect(this, &CContent::ChangeScrollModel);
    layout_phase = 2;
    SetEmitsMouseLeave(true);
}

CContent::~CContent() {
    DeleteChildren();
}

void CContent::SetGraph(graph_ptr2<Graph> shown_graph) {
    const CElementRef self(this);
    graph = graph_or_empty(shown_graph);
    forget_what_is_gone();
    graph->GetRoot().MakeLayout();
    RecalculateLayout();
    left_margin = top_margin = right_margin = bottom_margin = 0;
    const Node root = graph->GetRoot();
    SetStartX(root.GetPosition().x + (root.GetSize().width - view_size().width) * 0.5);
    if (self) {
        SetStartY(root.GetPosition().y + (root.GetSize().height - view_size().height) * 0.5);
    }
    if (self) {
        RenewView(true);
    }
}

graph_ptr2<Graph> CContent::GetGraph() const {
    return graph;
}

void CContent::SetDefaultNodeHandler(graph_ptr2<INodeHandler> handler) {
    graph->SetDefaultNodeHandler(handler);
}

void CContent::SetNeedCoordSystem(bool needs) {
    need_coord_system = needs;
}

void CContent::EnableRubberRect(bool on) {
    focus_rubber->drag_enabled = on;
    shift_rubber->drag_enabled = !on;
}

// The graph may have been exchanged, and nodes removed, by whoever heard of an event.

bool CContent::shows(const Node& node) const {
    return node.get_vis().get() == graph->GetRoot().get_vis().get() &&
           belongs_to_root(node.get_impl());
}

bool CContent::shows(const Edge& edge) const {
    return edge.get_vis().get() == graph->GetRoot().get_vis().get() &&
           edge.get_impl()->from().get() != nullptr;
}

void CContent::forget_what_is_gone() {
    const auto shown_node = [this](const Node& node) { return shows(node); };
    const auto shown_edge = [this](const Edge& edge) { return shows(edge); };
    keep_if(pressed_nodes, shown_node);
    keep_if(hovered_nodes, shown_node);
    keep_if(redraw_nodes, shown_node);
    keep_if(hovered_edges, shown_edge);
    keep_if(redraw_edges, shown_edge);
}

CoordsKeeper::CoordsKeeper(CContent* of_content, const Node& kept)
    : alive(of_content), content(of_content), node(kept), saved_position(kept.GetPosition()) {}

CoordsKeeper::~CoordsKeeper() {
    if (!alive) {
        return;
    }
    content->RecalculateLayout();
    content
        ->GetScale(); // Deliberate: asked and dropped; a derived viewer hears of the layout by it
    if (!content->shows(node)) {
        return;
    }
    const tamsel7::point<double> now = node.GetPosition();
    content->SetStartY(content->GetStartY() + now.y - saved_position.y);
    if (alive) {
        content->SetStartX(content->GetStartX() + now.x - saved_position.x);
    }
}

} // namespace nurvex7
