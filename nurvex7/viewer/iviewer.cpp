#include "nurvex7/viewer/iviewer.h"

namespace nurvex7 {

IViewer::~IViewer() = default;

} // namespace nurvex7
