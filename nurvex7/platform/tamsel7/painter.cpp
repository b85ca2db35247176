#include "nurvex7/platform/tamsel7/painter.h"

namespace tamsel7 {

IPainter::~IPainter() = default;

} // namespace tamsel7
