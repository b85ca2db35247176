#include "nurvex7/viewer/graph_viewer.h"

#include "nurvex7/viewer/graph_or_empty.h"

namespace nurvex7 {

using brevolt7::Alignment;
using brevolt7::CScrollBox;
using brevolt7::CVisualElement;

namespace {

CContent* make_plain_content(CVisualElement* parent_element, graph_ptr2<Graph> shown_graph,
                             bool needs_coord_system) {
    return new CContent(parent_element, shown_graph, needs_coord_system);
}

} // namespace

CGraphViewer::CGraphViewer(CVisualElement* parent_element, graph_ptr2<Graph> graph,
                           bool need_coord_system)
    : CGraphViewer(parent_element, graph, need_coord_system, &make_plain_content) {}

CGraphViewer::CGraphViewer(CVisualElement* parent_element, graph_ptr2<Graph> graph,
                           bool need_coord_system, content_maker make_content)
    : CVisualElement(parent_element, {100, 100}, Alignment::ALIGN_FILL) {
    Init(graph, need_coord_system, make_content);
}

CGraphViewer::CGraphViewer(CVisualElement* parent_element, tamsel7::size<int> size,
                           Alignment alignment)
    : CVisualElement(parent_element, size, alignment) {
    Init(graph_ptr2<Graph>(), /*need_coord_system=*/true, &make_plain_content);
}

CGraphViewer::~CGraphViewer() {
    DeleteChildren();
}

// The bars read the content as their model, and the content moves itself through the wrapped models
// of the box, so that the bars stay in step whoever scrolls.
void CGraphViewer::Init(const graph_ptr2<Graph>& graph, bool need_coord_system,
                        content_maker make_content) {
    scroll_box = new CScrollBox(this, {100, 100}, Alignment::ALIGN_FILL);
    content = make_content(scroll_box, graph, need_coord_system);
    content->OnChangeView.connect(this, &CGraphViewer::HandleOnChangeView);
    scroll_box->SetVertScroll(static_cast<brevolt7::IVertSimpleScrollModel*>(content));
    scroll_box->SetHorzScroll(static_cast<brevolt7::IHorzSimpleScrollModel*>(content));
    content->SetVertScroll(scroll_box->GetWrappedVertScroll());
    content->SetHorzScroll(scroll_box->GetWrappedHorzScroll());
    scroll_box->SetCentralPane(content);
}

void CGraphViewer::SetGraph(graph_ptr2<Graph> graph) {
    const graph_ptr2<Graph> shown = graph_or_empty(graph);
    if (default_node_handler.get() != nullptr) {
        shown->SetDefaultNodeHandler(default_node_handler);
    }
    content->SetGraph(shown);
}

void CGraphViewer::SetDefaultNodeHandler(graph_ptr2<INodeHandler> handler) {
    default_node_handler = handler;
    content->SetDefaultNodeHandler(handler);
}

void CGraphViewer::ScrollbarsEnable(bool on) {
    const int policy = on ? CScrollBox::BAR_AS_NEEDED : CScrollBox::BAR_HIDDEN;
    scroll_box->horz_bar_policy = policy;
    scroll_box->vert_bar_policy = policy;
    RenewView(true);
}

void CGraphViewer::HandleOnChangeView(tamsel7::point<double> a, tamsel7::point<double> b) {
    OnChangeView(a, b);
}

void CGraphViewer::SetStartX(double x) {
    content->SetStartX(x);
}

void CGraphViewer::SetStartY(double y) {
    content->SetStartY(y);
}

void CGraphViewer::SetScale(double pixels) {
    content->SetScale(pixels);
}

void CGraphViewer::SetViewWidth(double width) {
    content->SetViewWidth(width);
}

void CGraphViewer::SetViewHeight(double height) {
    content->SetViewHeight(height);
}

void CGraphViewer::SetNeedCoordSystem(bool needs) {
    content->SetNeedCoordSystem(needs);
}

double CGraphViewer::GetScale() const {
    return content->GetScale();
}

graph_ptr2<Graph> CGraphViewer::GetGraph() const {
    return content->GetGraph();
}

double CGraphViewer::GetStartX() const {
    return content->GetStartX();
}

double CGraphViewer::GetStartY() const {
    return content->GetStartY();
}

void CGraphViewer::RenewView(bool invalidate) {
    content->RenewView(invalidate);
}

bool CGraphViewer::RecalculateLayout() {
    return content->RecalculateLayout();
}

} // namespace nurvex7
