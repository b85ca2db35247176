#pragma once

#include "apps/nurvex/graph_opening.h"
#include "apps/nurvex/hover_content.h"
#include "hosts/qt/element_widget.h"
#include "nurvex7/foundation/signal.h"
#include "nurvex7/viewer/graph_viewer.h"

#include <QPointF>
#include <QRectF>

#include <functional>
#include <optional>

namespace nurvex {

/// The viewer in the middle of the window.
///
/// Space   graph, where nothing else is told
class GraphView : public nurvex7::qt::ElementWidget, public corvane2::_internal::subscriber_base_t {
public:
    /// What a drag on the view does.
    enum class DragMode { PAN, ZOOM_RECTANGLE, SELECT_RECTANGLE };

    std::function<void()> on_view_changed;    ///< scale, place or layout
    std::function<void()> on_rectangle_drawn; ///< a rectangle of either mode is done with
    std::function<void(QPoint)> on_menu;      ///< pixel

    explicit GraphView(QWidget* parent);

    nurvex7::CGraphViewer& GetViewer() const { return *viewer; }
    HoverContent& GetContent() const { return *content; }
    nurvex7::graph_ptr2<nurvex7::Graph> GetGraph() const { return viewer->GetGraph(); }

    /// Shows a graph that is laid out already.
    void ShowGraph(const nurvex7::graph_ptr2<nurvex7::Graph>& graph);
    /// The whole drawing where it can be read then, else from where it begins.
    void ShowWhole();
    void SetDragMode(DragMode mode);
    /// Lays out what is queued; a node that is given stays at its pixel.
    void Refresh(const std::optional<nurvex7::Node>& kept);

    double GetScale() const { return viewer->GetScale(); }
    /// What is at the middle stays there.
    void Zoom(double factor) { ZoomAt(factor, QPointF(width(), height()) / 2); }
    /// What is under a pixel stays there.
    void ZoomAt(double factor, QPointF pixel);
    void ShowActualSize() { Zoom(1 / GetScale()); }
    /// The whole drawing in the middle, enlarged by no more than the given scale.
    void Fit(double largest);
    void CentreOn(const nurvex7::Node& node);
    QRectF GetVisibleArea() const;
    /// The node at a pixel; empty where there is none.
    std::optional<nurvex7::Node> FindNode(QPoint pixel) const;

protected:
    bool event(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    void HandleChangeView(tamsel7::point<double> a, tamsel7::point<double> b);
    void HandleRectangle(nurvex7::CContent::frame_rubber* rubber, tamsel7::point<double> a,
                         tamsel7::point<double> b);
    void HandleMenu(brevolt7::CVisualElement* element, int x, int y);
    void tell_rectangle_drawn();
    double find_fit() const;
    void show_start(const nurvex7::Node& node);
    void show_from(QPointF start);

    nurvex7::CGraphViewer* viewer;
    HoverContent* content;
    DragMode mode = DragMode::PAN;
};

} // namespace nurvex
