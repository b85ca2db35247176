#pragma once

#include "nurvex7/export.h"
#include "nurvex7/model/graph.h"
#include "nurvex7/platform/brevolt7/scroll_box.h"
#include "nurvex7/viewer/content.h"
#include "nurvex7/viewer/iviewer.h"

namespace nurvex7 {

/// What an application puts into a window to show a graph: a scroll box with a CContent in it, to
/// which it passes everything on.
///
/// A node handler given once serves every graph that is set later.
/// Keeps   the handler, and a count of the graph
class NURVEX7_API CGraphViewer : public IViewer, public brevolt7::CVisualElement {
public:
    using content_maker = CContent* (*)(brevolt7::CVisualElement* parent_element,
                                        graph_ptr2<Graph> shown_graph, bool needs_coord_system);

    /// Fills its parent. An empty handle stands for an empty graph; `need_coord_system`: see
    /// CContent::SetNeedCoordSystem, mostly true.
    CGraphViewer(brevolt7::CVisualElement* parent_element, graph_ptr2<Graph> graph,
                 bool need_coord_system);
    /// The same with a content of the application's own.
    /// Duty    `make_content` gives a new child of the parent that it is given
    CGraphViewer(brevolt7::CVisualElement* parent_element, graph_ptr2<Graph> graph,
                 bool need_coord_system, content_maker make_content);
    /// With an empty graph.
    CGraphViewer(brevolt7::CVisualElement* parent_element, tamsel7::size<int> size,
                 brevolt7::Alignment alignment);
    ~CGraphViewer() override;

    void SetStartX(double x) override;
    void SetStartY(double y) override;
    void SetScale(double pixels) override;
    void SetViewWidth(double width) override;
    void SetViewHeight(double height) override;
    void SetGraph(graph_ptr2<Graph> graph) override;
    void SetDefaultNodeHandler(graph_ptr2<INodeHandler> handler) override;
    double GetScale() const override;
    graph_ptr2<Graph> GetGraph() const override;
    double GetStartX() const override;
    double GetStartY() const override;
    void RenewView(bool invalidate) override;
    bool RecalculateLayout() override;
    virtual void SetNeedCoordSystem(bool needs);

    /// Bars as needed, or none.
    void ScrollbarsEnable(bool on);
    /// The element that shows the graph, with its settings and its signals.
    CContent* GetContent() const { return content; }
    /// Receives OnChangeView of the content and passes it on.
    void HandleOnChangeView(tamsel7::point<double> a, tamsel7::point<double> b);

private:
    void Init(const graph_ptr2<Graph>& graph, bool need_coord_system, content_maker make_content);

    CContent* content = nullptr;
    brevolt7::CScrollBox* scroll_box = nullptr;
    graph_ptr2<INodeHandler> default_node_handler;
};

} // namespace nurvex7
