#include "nurvex7/platform/brevolt7/window.h"

namespace brevolt7 {

IWindow::~IWindow() = default;

IWindowScrollBar::~IWindowScrollBar() = default;

std::unique_ptr<IWindowScrollBar> IWindow::MakeScrollBar(bool /*horizontal*/,
                                                         std::function<void(double)> /*moved*/) {
    return nullptr;
}

int IWindow::GetScrollBarThickness() const {
    return 0;
}

} // namespace brevolt7
