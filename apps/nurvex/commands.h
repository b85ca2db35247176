#pragma once

#include "apps/nurvex/command_line.h"

namespace nurvex {

/// Draws a text graph into a file.
/// Errors  a Failure; the file is as it was then
void RunDraw(const DrawOptions& options);

/// Tells the faults of a text graph on standard error, or the size of a graph without any on
/// standard output.
/// Errors  a Failure where there are faults or the file cannot be read
void RunCheck(const CheckOptions& options);

} // namespace nurvex
