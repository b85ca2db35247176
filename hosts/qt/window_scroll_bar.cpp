#include "hosts/qt/window_scroll_bar.h"

#include "hosts/qt/input.h"

#include <QSignalBlocker>
#include <QStyle>

#include <algorithm>
#include <cmath>
#include <utility>

namespace nurvex7::qt {

namespace {

/// What a click on an arrow moves. Space: pixel.
constexpr int ARROW_STEP = 40;
/// Ranges beyond that are shown more coarsely than by pixels.
constexpr double MOST_STEPS = 1 << 30;

} // namespace

WindowScrollBar::WindowScrollBar(QWidget& owner, bool horizontal, std::function<void(double)> moved)
    : bar(new QScrollBar(horizontal ? Qt::Horizontal : Qt::Vertical, &owner)) {
    bar->setFocusPolicy(Qt::NoFocus);
    bar->setCursor(Qt::ArrowCursor);
    bar->setSingleStep(ARROW_STEP);
    QObject::connect(
        bar, &QScrollBar::valueChanged, bar,
        [this, told = std::move(moved)](int value) { told(from + value / steps_a_unit); });
}

WindowScrollBar::~WindowScrollBar() {
    if (bar) {
        bar->disconnect();
        bar->hide();
        bar->deleteLater(); // it may be the bar itself that has led here
    }
}

int WindowScrollBar::ThicknessFor(const QWidget& widget) {
    return widget.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, &widget);
}

void WindowScrollBar::SetPlace(const tamsel7::rectangle<int>& place) {
    if (bar) {
        bar->setGeometry(ToQt(place));
    }
}

void WindowScrollBar::SetShown(bool shown) {
    if (bar) {
        bar->setVisible(shown);
    }
}

/// One step is one pixel of the view, which is as long as its bar.
void WindowScrollBar::SetState(const brevolt7::ScrollState& state) {
    if (!bar || !(state.span > 0)) {
        return;
    }
    const int length = bar->orientation() == Qt::Horizontal ? bar->width() : bar->height();
    const double range = std::max(state.span, state.to - state.from);
    steps_a_unit = std::min(std::max(1, length) / state.span, MOST_STEPS / range);
    from = state.from;
    const auto steps = [this](double units) {
        return static_cast<int>(std::lround(units * steps_a_unit));
    };
    const QSignalBlocker quiet(bar);
    bar->setPageStep(std::max(1, steps(state.span)));
    bar->setRange(0, steps(range - state.span));
    bar->setValue(steps(state.start - state.from));
}

} // namespace nurvex7::qt
