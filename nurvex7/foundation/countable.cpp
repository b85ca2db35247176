#include "nurvex7/foundation/countable.h"

namespace nurvex7 {

Countable::~Countable() = default;

Counter::~Counter() = default;

} // namespace nurvex7
