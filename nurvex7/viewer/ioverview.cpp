#include "nurvex7/viewer/ioverview.h"

namespace nurvex7 {

IOverview::~IOverview() = default;

} // namespace nurvex7
