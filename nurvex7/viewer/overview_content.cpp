#include "nurvex7/viewer/overview_content.h"

#include "nurvex7/model/graph.h"
#include "nurvex7/model/queries.h"
#include "nurvex7/platform/brevolt7/element_ref.h"
#include "nurvex7/platform/tamsel7/painter.h"
#include "nurvex7/platform/tamsel7/palette.h"
#include "nurvex7/viewer/drawing_walks.h"
#include "nurvex7/viewer/pixel.h"

#include <algorithm>
#include <cmath>

namespace nurvex7 {

using brevolt7::CElementRef;
using brevolt7::UpdateType;

namespace {

constexpr double KEY_STEP = 10.0;
constexpr double BORDER_IN_PIXELS = 2.0;
constexpr double CATCH_IN_PIXELS = 1.0;
constexpr tamsel7::_color FRAME(180, 20, 20);
constexpr int FRAME_WIDTH = 2;

/// The graph of a viewer; empty where there is none.
graph_ptr2<Graph> graph_of(const IViewer* viewer) {
    return viewer != nullptr ? viewer->GetGraph() : graph_ptr2<Graph>();
}

} // namespace

COverviewContent::COverviewContent(brevolt7::CVisualElement* parent_element, IViewer* shown_viewer)
    : CCentralPart(parent_element, {40, 40}, brevolt7::Alignment::ALIGN_FILL) {
    shift_rubber = new drag_rubber(this);
    shift_rubber->drag_enabled = true;
    shift_rubber->sig_start.connect(this, &COverviewContent::StartShiftProcessing);
    shift_rubber->sig_move.connect(this, &COverviewContent::ShiftProcessing);
    SetViewer(shown_viewer);
}

COverviewContent::~COverviewContent() {
    DeleteChildren();
}

// The viewer

void COverviewContent::SetViewer(IViewer* shown_viewer) {
    if (shown_viewer == viewer) {
        return;
    }
    if (viewer != nullptr) {
        viewer->OnChangeView.disconnect(this, &COverviewContent::HandleOnChangeView);
    }
    viewer = shown_viewer;
    if (viewer != nullptr) {
        viewer->OnChangeView.connect(this, &COverviewContent::HandleOnChangeView);
        viewer->RenewView(false); // gives the frame its first value
    }
}

IViewer* COverviewContent::GetViewer() const {
    return viewer;
}

void COverviewContent::SetStartX(double x) {
    if (viewer != nullptr) {
        viewer->SetStartX(x);
    }
}

void COverviewContent::SetStartY(double y) {
    if (viewer != nullptr) {
        viewer->SetStartY(y);
    }
}

void COverviewContent::SetViewWidth(double width) {
    if (viewer != nullptr) {
        viewer->SetViewWidth(width);
    }
}

void COverviewContent::SetViewHeight(double height) {
    if (viewer != nullptr) {
        viewer->SetViewHeight(height);
    }
}

void COverviewContent::HandleOnChangeView(position a, position b) {
    view_left = a.x;
    view_top = a.y;
    view_right = b.x;
    view_bottom = b.y;
    compute_zoom();
    OnChange(this, UpdateType::UPDATE_REPAINT);
}

/// No finite number for a graph without an extent.
void COverviewContent::compute_zoom() {
    const graph_ptr2<Graph> graph = graph_of(viewer);
    if (graph.get() == nullptr) {
        return;
    }
    const tamsel7::rectangle<int> content = GetContentRect();
    const tamsel7::size<double> root = graph->GetRoot().GetSize();
    overview_zoom = std::min((content.right - content.left) / root.width,
                             (content.bottom - content.top) / root.height);
}

void COverviewContent::SetPos(const tamsel7::rectangle<int>& place, bool repaint) {
    const CElementRef self(this);
    CCentralPart::SetPos(place, repaint);
    if (self) {
        compute_zoom();
        OnChange(this, UpdateType::UPDATE_REPAINT);
    }
}

// Painting

bool COverviewContent::IsFullRepainted() const {
    return true;
}

void COverviewContent::SetCoordSystem(tamsel7::IPainter* painter) {
    const graph_ptr2<Graph> graph = graph_of(viewer);
    if (graph.get() == nullptr) {
        return;
    }
    tamsel7::IPainter::MapMode mode{};
    tamsel7::IPainter::CoordInfo info;
    painter->GetCoordSystem(mode, &info);
    const tamsel7::size<double> root = graph->GetRoot().GetSize();
    info.logical_x = 0;
    info.logical_y = 0;
    info.logical_width = root.width;
    info.logical_height = root.height;
    const tamsel7::rectangle<double> area = GetDrawRect(nullptr);
    info.device_x = to_pixel(area.left);
    info.device_y = to_pixel(area.top);
    info.device_width = to_pixel(area.right) - info.device_x;
    info.device_height = to_pixel(area.bottom) - info.device_y;
    painter->SetCoordSystem(tamsel7::IPainter::MapMode::MAP_LOGICAL, &info);
}

void COverviewContent::DrawContent(tamsel7::IPainter* painter) {
    draw_ground(painter);
    if (graph_of(viewer).get() == nullptr) {
        return;
    }
    SetCoordSystem(painter);
    // Without an extent there is nothing to be seen, and no scale at which to see it.
    if (std::isfinite(overview_zoom)) {
        draw_nodes(painter);
    }
    draw_frame(painter);
    painter->CancelClip();
}

void COverviewContent::draw_ground(tamsel7::IPainter* painter) const {
    const tamsel7::rectangle<int> area = painter->GetDrawArea();
    const int background = tamsel7::SysPalette::VIEW_BACKGROUND;
    painter->SetBrush({tamsel7::GetSysPalette().GetColor(background), 1});
    painter->FillRect(area.left, area.top, area.right, area.bottom);
}

void COverviewContent::draw_nodes(tamsel7::IPainter* painter) const {
    const Node root = viewer->GetGraph()->GetRoot();
    const DrawNode draw(painter, overview_zoom);
    draw(root);
    NodeSet owned = root.GetOwned();
    for (int i = 0; i < owned.GetCount(); ++i) {
        ForEachNodeIn(owned.GetItem(i), draw, false, true);
    }
}

void COverviewContent::draw_frame(tamsel7::IPainter* painter) const {
    painter->SetPen({FRAME, FRAME_WIDTH, 1});
    painter->SetBrush({tamsel7::_color(0, 0, 0), 0});
    painter->Rectangle(view_left, view_top, view_right, view_bottom);
}

// Steering

void COverviewContent::StartShiftProcessing(drag_rubber* rubber, position p, position /*same*/) {
    const double d = BORDER_IN_PIXELS / overview_zoom;
    if (p.x > view_right + d || p.x < view_left - d || p.y > view_bottom + d ||
        p.y < view_top - d) {
        rubber->EndDragging();
        return;
    }
    if (p.x > view_left + d && p.x < view_right - d && p.y > view_top + d &&
        p.y < view_bottom - d) {
        shift_mode = SHIFT_MOVE;
        return;
    }
    shift_mode = SHIFT_RESIZE;
    saved_left = view_left;
    saved_top = view_top;
    saved_right = view_right;
    saved_bottom = view_bottom;
}

void COverviewContent::ShiftProcessing(drag_rubber* /*rubber*/, position start, position cur,
                                       position prev) {
    const CElementRef self(this);
    if (shift_mode == SHIFT_MOVE) {
        move_viewer(cur, prev);
    } else {
        drag_border(start, cur, prev);
    }
    if (self) {
        invalidate_window();
    }
}

/// The viewer answers the first step with the rectangle that it shows by then; the second one goes
/// on from there.
void COverviewContent::move_viewer(position cur, position prev) {
    const CElementRef self(this);
    if (viewer != nullptr) {
        viewer->SetStartX(view_left + cur.x - prev.x);
    }
    if (self && viewer != nullptr) {
        viewer->SetStartY(view_top + cur.y - prev.y);
    }
}

/// Moves the sides that the press has caught; near a corner these are two. The viewer answers each
/// step with the rectangle that it shows by then, which must not disturb the steps after it.
void COverviewContent::drag_border(position start, position cur, position prev) {
    const CElementRef self(this);
    const double e = CATCH_IN_PIXELS / overview_zoom;
    const double dx = cur.x - prev.x;
    const double dy = cur.y - prev.y;
    const double left = view_left += std::abs(start.x - saved_left) < e ? dx : 0;
    const double right = view_right += std::abs(start.x - saved_right) < e ? dx : 0;
    const double top = view_top += std::abs(start.y - saved_top) < e ? dy : 0;
    view_bottom += std::abs(start.y - saved_bottom) < e ? dy : 0;
    if (viewer != nullptr && (left != saved_left || top != saved_top)) {
        viewer->SetStartX(left);
        if (self && viewer != nullptr) {
            viewer->SetStartY(top);
        }
    }
    // Deliberate: one scale serves both directions, and it follows the width.
    if (self) {
        SetViewWidth(right - left);
    }
}

bool COverviewContent::HandleKeyDown(int /*flags*/, int key) {
    switch (key) {
    case brevolt7::KEY_LEFT:
        SetStartX(view_left + KEY_STEP);
        return true;
    case brevolt7::KEY_RIGHT:
        SetStartX(view_left - KEY_STEP);
        return true;
    case brevolt7::KEY_UP:
        SetStartY(view_top + KEY_STEP);
        return true;
    case brevolt7::KEY_DOWN:
        SetStartY(view_top - KEY_STEP);
        return true;
    default:
        return false;
    }
}

} // namespace nurvex7
