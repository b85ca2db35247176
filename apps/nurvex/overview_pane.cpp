#include "apps/nurvex/overview_pane.h"

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
    using COverviewContent::COverviewContent;

    void SetCoordSystem(tamsel7::IPainter* painter) override {
        tamsel7::IPainter::MapMode mode{};
        tamsel7::IPainter::CoordInfo info;
        painter->GetCoordSystem(mode, &info);
        const auto bounds = GetBounds();
        const auto drawing =
            viewer != nullptr ? viewer->GetGraph()->GetRoot().GetSize() : tamsel7::size<double>();
        const double wide = std::max(1.0, drawing.width);
        const double high = std::max(1.0, drawing.height);
        const double zoom = std::min(std::max(1, bounds.right - 2 * MARGIN) / wide,
                                     std::max(1, bounds.bottom - 2 * MARGIN) / high);
        info.device_x = 0;
        info.device_y = 0;
        info.device_width = bounds.right;
        info.device_height = bounds.bottom;
        info.logical_width = bounds.right / zoom;
        info.logical_height = bounds.bottom / zoom;
        info.logical_x = (wide - info.logical_width) / 2;
        info.logical_y = (high - info.logical_height) / 2;
        painter->SetCoordSystem(tamsel7::IPainter::MapMode::MAP_LOGICAL, &info);
    }

    /// Sides of the frame that lie beyond the pane are drawn along its edge.
    void DrawContent(tamsel7::IPainter* painter) override {
        const auto bounds = GetBounds();
        if (viewer == nullptr || viewer->GetGraph()->GetRoot().GetOwned().GetCount() == 0) {
            draw_ground(painter);
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
        COverviewContent::DrawContent(painter);
        view_left = left;
        view_right = right;
        view_top = top;
        view_bottom = bottom;
    }

    void draw_ground(tamsel7::IPainter* painter) const {
        const auto area = painter->GetDrawArea();
        painter->SetBrush({GetBkColor(), 1});
        painter->FillRect(area.left, area.top, area.right, area.bottom);
    }

    bool HandleButtonDown(int x, int y, int flags, tamsel7::MouseButton button) override {
        position at{static_cast<double>(x), static_cast<double>(y)};
        DP2LP(&at);
        const double border = 2 / overview_zoom;
        const bool beside = at.x < view_left - border || at.x > view_right + border ||
                            at.y < view_top - border || at.y > view_bottom + border;
        if (beside && button == tamsel7::MouseButton::LEFT && viewer != nullptr) {
            const position half{(view_right - view_left) / 2, (view_bottom - view_top) / 2};
            SetStartX(at.x - half.x);
            SetStartY(at.y - half.y);
        }
        return COverviewContent::HandleButtonDown(x, y, flags, button);
    }
};

OverviewPane::OverviewPane(QWidget* parent, IViewer* viewer)
    : ElementWidget(parent), content(new Element(GetRoot(), viewer)) {
    setMinimumSize(USUAL_SIZE / 2);
}

/// The viewer may be gone before the element is.
OverviewPane::~OverviewPane() {
    content->SetViewer(nullptr);
}

QSize OverviewPane::sizeHint() const {
    return USUAL_SIZE;
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
