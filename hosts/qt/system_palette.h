#pragma once

#include <QPalette>

namespace nurvex7::qt {

/// Takes the colours of a toolkit's palette over into tamsel7::GetSysPalette, which is one for the
/// whole process.
void FollowPalette(const QPalette& palette);

} // namespace nurvex7::qt
