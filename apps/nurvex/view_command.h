#pragma once

#include "apps/nurvex/command_line.h"

namespace nurvex {

/// Shows a window until it is closed.
/// Errors  a Failure where there is no display
void RunView(const ViewOptions& options);

} // namespace nurvex
