#include "nurvex7/presentation/inode_drawer.h"

namespace nurvex7 {

INodeDrawer::~INodeDrawer() = default;

} // namespace nurvex7
