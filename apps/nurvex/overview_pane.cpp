#include "apps/nurvex/overview_pane.h"

#include "nurvex7/model/folding.h"
#include "nurvex7/model/graph.h"
#include "nurvex7/platform/tamsel7/painter.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace nurvex {

using namespace nurvex7;

namespace {

constexpr QSize USUAL_SIZE(240, 180);
constexpr int MARGIN = 8;         ///< around the drawing, pixel
constexpr int SMALLEST_FRAME = 6; ///< pixel

} // namespace

/// Takes the whole pane, where the overview of the library fits the drawing tightly.
class OverviewPane::Element final : public COverviewContent {
public:
    Element(OverviewPane& around, IViewer* shown)
        : COverviewContent(around.GetRoot(), shown), pane(around) {}

    void SetCoordSystem(tamsel7::IPainter* painter) override {
        tamsel7::IPainter::MapMode mode{};
        tamsel7::IPainter::CoordInfo info;
        painter->GetCoordSystem(mode, &info);
        const auto bounds = GetBounds();
        const auto drawing = find_extent();
        const double zoom = find_zoom();
        info.device_x = 0;
        info.device_y = 0;
        info.device_width = bounds.right;
        info.device_height = bounds.bottom;
        info.logical_width = bounds.right / zoom;
        info.logical_height = bounds.bottom / zoom;
        info.logical_x = (drawing.width - info.logical_width) / 2;
        info.logical_y = (drawing.height - info.logical_height) / 2;
        painter->SetCoordSystem(tamsel7::IPainter::MapMode::MAP_LOGICAL, &info);
    }

    /// All but the frame.
    void DrawUnderFrame(tamsel7::IPainter* painter) {
        draw_ground(painter);
        if (shows_nothing()) {
            return;
        }
        overview_zoom = find_zoom();
        SetCoordSystem(painter);
        tell_painting(true);
        draw_nodes(painter);
        tell_painting(false);
    }

    /// Sides of the frame that lie beyond the pane are drawn along its edge.
    void DrawContent(tamsel7::IPainter* painter) override {
        pane.lay_drawing();
        const auto bounds = GetBounds();
        if (shows_nothing()) {
            return;
        }
        position first{1, 1};
        position last{bounds.right - 1.0, bounds.bottom - 1.0};
        DP2LP(&first);
        DP2LP(&last);
        const double smallest = SMALLEST_FRAME * (last.x - first.x) / std::max(1, bounds.right);
        const auto drawn = [](double& side, double from, double to) {
            return std::exchange(side, std::clamp(side, from, std::max(from, to)));
        };
        const double left = drawn(view_left, first.x, last.x - smallest);
        const double right = drawn(view_right, view_left + smallest, last.x);
        const double top = drawn(view_top, first.y, last.y - smallest);
        const double bottom = drawn(view_bottom, view_top + smallest, last.y);
        SetCoordSystem(painter);
        draw_frame(painter);
        view_left = left;
        view_right = right;
        view_top = top;
        view_bottom = bottom;
    }

    bool HandleButtonDown(int x, int y, int flags, tamsel7::MouseButton button) override {
        if (shows_nothing()) {
            return false;
        }
        overview_zoom = find_zoom();
        position at{static_cast<double>(x), static_cast<double>(y)};
        DP2LP(&at);
        const double border = 2 / overview_zoom;
        const bool beside = at.x < view_left - border || at.x > view_right + border ||
                            at.y < view_top - border || at.y > view_bottom + border;
        if (beside && button == tamsel7::MouseButton::LEFT) {
            const position half{(view_right - view_left) / 2, (view_bottom - view_top) / 2};
            SetStartX(at.x - half.x);
            SetStartY(at.y - half.y);
            overview_zoom = find_zoom(); // each change of the view sets that of the base
        }
        return COverviewContent::HandleButtonDown(x, y, flags, button);
    }

    bool HandleMouseMove(int x, int y, int flags, tamsel7::MouseButton button) override {
        overview_zoom = find_zoom();
        return COverviewContent::HandleMouseMove(x, y, flags, button);
    }

private:
    bool shows_nothing() const {
        if (viewer == nullptr) {
            return true;
        }
        NodeSet owned = viewer->GetGraph()->GetRoot().GetOwned();
        for (int i = 0; i < owned.GetCount(); ++i) {
            if (!IsFlagSet(owned.GetItem(i), NODE_HIDDEN)) {
                return false;
            }
        }
        return true;
    }

    /// Space   graph; never empty
    tamsel7::size<double> find_extent() const {
        const auto drawing =
            viewer != nullptr ? viewer->GetGraph()->GetRoot().GetSize() : tamsel7::size<double>();
        return {std::max(1.0, drawing.width), std::max(1.0, drawing.height)};
    }

    /// Pixels for one unit. The base has one of its own, for a drawing without a margin.
    double find_zoom() const {
        const auto bounds = GetBounds();
        const auto drawing = find_extent();
        return std::min(std::max(1, bounds.right - 2 * MARGIN) / drawing.width,
                        std::max(1, bounds.bottom - 2 * MARGIN) / drawing.height);
    }

    void tell_painting(bool begins) const {
        if (pane.on_painting) {
            pane.on_painting(begins);
        }
    }

    OverviewPane& pane;
};

OverviewPane::OverviewPane(QWidget* parent, IViewer* viewer)
    : ElementWidget(parent), content(new Element(*this, viewer)) {
    setMinimumSize(USUAL_SIZE / 2);
    renewal.setSingleShot(true);
    renewal.setInterval(0); // behind all events that wait, and the repaint of the view is one
    connect(&renewal, &QTimer::timeout, this, &OverviewPane::renew_now);
}

/// The viewer may be gone before the element is.
OverviewPane::~OverviewPane() {
    content->SetViewer(nullptr);
}

QSize OverviewPane::sizeHint() const {
    return USUAL_SIZE;
}

void OverviewPane::lay_drawing() {
    if (drawing.size() != GetPicture().size() ||
        drawing.devicePixelRatio() != GetPicture().devicePixelRatio()) {
        renewal.stop();
        drawing = MakePicture();
        nurvex7::qt::QtPainter painter(drawing, GetTypesetter());
        painter.BeginPaint(tamsel7::IPainter::StdSettings::STANDARD);
        content->DrawUnderFrame(&painter);
        painter.EndPaint();
    }
    LayPicture(drawing);
}

void OverviewPane::renew_now() {
    drawing = QImage();
    content->Invalidate();
}

/// Colours may follow the desktop's.
void OverviewPane::changeEvent(QEvent* event) {
    drawing = QImage();
    ElementWidget::changeEvent(event);
}

COverviewContent& OverviewPane::GetContent() const {
    return *content;
}

QPointF OverviewPane::ToPixel(QPointF place) const {
    tamsel7::point<double> p{place.x(), place.y()};
    content->LP2DP(&p);
    return {p.x, p.y};
}

} // namespace nurvex
