#include "nurvex7/platform/brevolt7/control.h"

namespace brevolt7 {

IControl::~IControl() = default;

} // namespace brevolt7
