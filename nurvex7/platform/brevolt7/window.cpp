#include "nurvex7/platform/brevolt7/window.h"

namespace brevolt7 {

IWindow::~IWindow() = default;

} // namespace brevolt7
