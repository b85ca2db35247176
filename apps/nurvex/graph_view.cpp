#include "apps/nurvex/graph_view.h"

#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace nurvex {

using namespace nurvex7;

namespace {

constexpr double SMALLEST_SCALE = 0.005; ///< or what a larger drawing needs to be seen whole
constexpr double LARGEST_SCALE = 16;
constexpr double READABLE = 0.6;   ///< captions can still be read
constexpr double FIT_MARGIN = 16;  ///< pixel
constexpr double WHEEL_ZOOM = 1.2; ///< for one notch

/// Where a drawing begins: on the level that is farthest to the left, the leaf that is nearest to
/// the middle. Leaves are centred on their level. The root where nothing is drawn.
Node find_start(const Node& root) {
    const auto middle_of = [](const Node& node) {
        return QPointF(node.GetPosition().x + node.GetSize().width / 2,
                       node.GetPosition().y + node.GetSize().height / 2);
    };
    const double middle = middle_of(root).y();
    std::optional<Node> best;
    const auto is_better = [&](const Node& node) {
        const QPointF place = middle_of(node);
        const QPointF other = middle_of(*best);
        constexpr double same_level = 0.5;
        return std::abs(place.x() - other.x()) > same_level
                   ? place.x() < other.x()
                   : std::abs(place.y() - middle) < std::abs(other.y() - middle);
    };
    ForEachNodeIn(
        root,
        [&](const Node& node) {
            if (node.GetOwned().GetCount() == 0 && IsFlagSet(node, NODE_DRAWN) &&
                (!best || is_better(node))) {
                best.emplace(node);
            }
        },
        /*post_order=*/false, /*include_self=*/false);
    return best.value_or(root);
}

} // namespace

GraphView::GraphView(QWidget* parent)
    : ElementWidget(parent),
      viewer(new CGraphViewer(GetRoot(), graph_ptr2<Graph>(), true, &HoverContent::Make)),
      content(static_cast<HoverContent*>(viewer->GetContent())) {
    viewer->OnChangeView.connect(this, &GraphView::HandleChangeView);
    content->OnContextMenu.connect(this, &GraphView::HandleMenu);
    content->GetRubberRect()->sig_finish.connect(this, &GraphView::HandleRectangle);
    setFocusPolicy(Qt::StrongFocus);
}

void GraphView::ShowGraph(const graph_ptr2<Graph>& graph) {
    content->ShowLaidOut(graph);
    ShowWhole();
}

void GraphView::ShowWhole() {
    Fit(1.0);
    if (GetScale() < READABLE) {
        const graph_ptr2<Graph> graph = GetGraph();
        MarkDrawnIn(graph);
        show_start(find_start(graph->GetRoot()));
    }
}

/// A large drawing is shown at its natural size from where it begins; the overview shows the rest.
void GraphView::show_start(const Node& node) {
    viewer->SetScale(1);
    CentreOn(node);
    const Node root = GetGraph()->GetRoot();
    const auto corner = root.GetPosition();
    const auto size = root.GetSize();
    const double left = node.GetPosition().x - FIT_MARGIN;
    const double lowest = corner.y + size.height + FIT_MARGIN - height();
    const double highest = corner.y - FIT_MARGIN;
    show_from({left, size.height + 2 * FIT_MARGIN < height()
                         ? (highest + lowest) / 2
                         : std::clamp(viewer->GetStartY(), highest, lowest)});
}

void GraphView::SetDragMode(DragMode chosen) {
    mode = chosen;
    content->EnableRubberRect(mode != DragMode::PAN);
    // The selection is made here, see HandleRectangle.
    content->SetRubberMode(mode == DragMode::ZOOM_RECTANGLE ? RUBBER_ZOOM : RUBBER_SELECT);
    content->SetCursor(mode == DragMode::PAN ? brevolt7::CursorShape::ARROW
                                             : brevolt7::CursorShape::CROSS);
}

void GraphView::Refresh(const std::optional<Node>& kept) {
    const auto before = kept ? kept->GetPosition() : tamsel7::point<double>{};
    viewer->RecalculateLayout();
    const auto after = kept ? kept->GetPosition() : before;
    show_from({viewer->GetStartX() + after.x - before.x, viewer->GetStartY() + after.y - before.y});
    viewer->RenewView(true);
}

void GraphView::show_from(QPointF start) {
    viewer->SetStartX(start.x());
    viewer->SetStartY(start.y());
}

void GraphView::ZoomAt(double factor, QPointF pixel) {
    const double before = GetScale();
    const double smallest = std::min({SMALLEST_SCALE, find_fit(), before});
    const double after = std::clamp(before * factor, smallest, LARGEST_SCALE);
    const QPointF start(viewer->GetStartX(), viewer->GetStartY());
    viewer->SetScale(after);
    show_from(start + pixel / before - pixel / after);
}

void GraphView::Fit(double largest) {
    viewer->SetScale(std::min(find_fit(), largest));
    CentreOn(GetGraph()->GetRoot());
}

/// The scale at which the whole drawing fills the view.
double GraphView::find_fit() const {
    const auto size = GetGraph()->GetRoot().GetSize();
    return std::min(std::max(1.0, width() - 2 * FIT_MARGIN) / std::max(1.0, size.width),
                    std::max(1.0, height() - 2 * FIT_MARGIN) / std::max(1.0, size.height));
}

void GraphView::CentreOn(const Node& node) {
    const auto corner = node.GetPosition();
    const auto size = node.GetSize();
    const double scale = GetScale();
    show_from({corner.x + (size.width - width() / scale) / 2,
               corner.y + (size.height - height() / scale) / 2});
}

QRectF GraphView::GetVisibleArea() const {
    const auto bounds = GetContent().GetContentRect();
    return QRectF(viewer->GetStartX(), viewer->GetStartY(),
                  (bounds.right - bounds.left) / GetScale(),
                  (bounds.bottom - bounds.top) / GetScale());
}

std::optional<Node> GraphView::FindNode(QPoint pixel) const {
    const auto at = GetContent().FromWindow({pixel.x(), pixel.y()});
    const Node hit = GetContent().FindDrawn(at.x, at.y);
    return IsRoot(hit) ? std::nullopt : std::optional<Node>(hit);
}

// Events

/// The frame of a rectangle is drawn on what stands below it: until the release, nothing else moves
/// the view. The escape key gives the rectangle up.
bool GraphView::event(QEvent* event) {
    const bool is_key =
        event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    const bool moves_view = is_key || event->type() == QEvent::Wheel;
    if (!moves_view || !content->GetRubberRect()->dragging) {
        return ElementWidget::event(event);
    }
    if (event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        GetControl().ProcessCaptureLost();
        tell_rectangle_drawn();
    }
    event->accept();
    return true;
}

void GraphView::tell_rectangle_drawn() {
    if (on_rectangle_drawn) {
        on_rectangle_drawn();
    }
}

void GraphView::wheelEvent(QWheelEvent* event) {
    const double notches = event->angleDelta().y() / static_cast<double>(brevolt7::WHEEL_NOTCH);
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        ElementWidget::wheelEvent(event);
    } else if (notches != 0) {
        ZoomAt(std::pow(WHEEL_ZOOM, notches), event->position());
        event->accept();
    }
}

void GraphView::mouseMoveEvent(QMouseEvent* event) {
    ElementWidget::mouseMoveEvent(event);
    if (event->buttons() == Qt::NoButton) {
        const QPoint pixel = event->position().toPoint();
        const auto at = GetContent().FromWindow({pixel.x(), pixel.y()});
        GetContent().HoverAt(at.x, at.y);
    }
}

void GraphView::HandleChangeView(tamsel7::point<double> /*a*/, tamsel7::point<double> /*b*/) {
    if (on_view_changed) {
        on_view_changed();
    }
}

void GraphView::HandleMenu(brevolt7::CVisualElement* element, int x, int y) {
    const auto at = element->ToWindow({x, y});
    if (on_menu) {
        on_menu({at.x, at.y});
    }
}

/// Selects by the rectangle as the user sees it. The content's own selection takes its corners for
/// pixels, and the handlers here leave it alone.
void GraphView::HandleRectangle(CContent::frame_rubber* /*rubber*/, tamsel7::point<double> a,
                                tamsel7::point<double> b) {
    if (mode == DragMode::SELECT_RECTANGLE) {
        const graph_ptr2<Graph> graph = GetGraph();
        NodeSet hit = graph->HitNodeTest(std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x),
                                         std::max(a.y, b.y));
        for (int i = 0; i < hit.GetCount(); ++i) {
            const Node node = hit.GetItem(i);
            if (IsFlagSet(node, NODE_DRAWN) && node.GetOwned().GetCount() == 0) {
                Select(node);
            }
        }
        viewer->RenewView(true);
    }
    tell_rectangle_drawn();
}

} // namespace nurvex
