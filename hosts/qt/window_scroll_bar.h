#pragma once

#include "nurvex7/platform/brevolt7/window.h"

#include <QPointer>
#include <QScrollBar>

#include <functional>

namespace nurvex7::qt {

/// A scroll bar of the toolkit, standing on the widget of the elements that it scrolls.
class WindowScrollBar final : public brevolt7::IWindowScrollBar {
public:
    WindowScrollBar(QWidget& owner, bool horizontal, std::function<void(double)> moved);
    ~WindowScrollBar() override;
    WindowScrollBar(const WindowScrollBar&) = delete;
    WindowScrollBar& operator=(const WindowScrollBar&) = delete;

    void SetPlace(const tamsel7::rectangle<int>& place) override;
    void SetShown(bool shown) override;
    void SetState(const brevolt7::ScrollState& state) override;

    /// How thick the style of a widget makes them.
    static int ThicknessFor(const QWidget& widget);

private:
    QPointer<QScrollBar> bar;
    double from = 0;
    double steps_a_unit = 1; ///< of the toolkit's whole numbers
};

} // namespace nurvex7::qt
