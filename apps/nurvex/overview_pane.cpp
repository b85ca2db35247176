#include "apps/nurvex/overview_pane.h"

#include "nurvex7/model/graph.h"

#include <algorithm>
#include <cmath>

namespace nurvex {

using namespace nurvex7;

namespace {

constexpr QSize USUAL_SIZE(240, 180);
constexpr int MARGIN = 6; ///< pixel

} // namespace

OverviewPane::OverviewPane(QWidget* parent, IViewer* viewer)
    : ElementWidget(parent), content(new COverviewContent(GetRoot(), viewer)) {
    content->SetAlignment(brevolt7::Alignment::ALIGN_NONE);
    setMinimumSize(USUAL_SIZE / 2);
}

/// The viewer may be gone before the element is.
OverviewPane::~OverviewPane() {
    content->SetViewer(nullptr);
}

QSize OverviewPane::sizeHint() const {
    return USUAL_SIZE;
}

void OverviewPane::resizeEvent(QResizeEvent* event) {
    ElementWidget::resizeEvent(event);
    Place();
}

void OverviewPane::Place() {
    if (content->GetViewer() == nullptr) {
        return;
    }
    const auto drawing = content->GetViewer()->GetGraph()->GetRoot().GetSize();
    const double across = std::max(1, width() - 2 * MARGIN);
    const double down = std::max(1, height() - 2 * MARGIN);
    const double zoom =
        std::min(across / std::max(1.0, drawing.width), down / std::max(1.0, drawing.height));
    const int wide = std::max(1, static_cast<int>(std::lround(drawing.width * zoom)));
    const int high = std::max(1, static_cast<int>(std::lround(drawing.height * zoom)));
    const int left = (width() - wide) / 2;
    const int top = (height() - high) / 2;
    content->SetPos({left, top, left + wide, top + high}, true);
}

} // namespace nurvex
