#include "nurvex7/presentation/iport_node_drawer.h"

namespace nurvex7 {

IPortNodeDrawer::~IPortNodeDrawer() = default;

} // namespace nurvex7
