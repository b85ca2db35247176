#pragma once

#include "apps/nurvex/spacing.h"

#include <QWidget>

#include <optional>

namespace nurvex {

/// Asks for the distances that a drawing keeps. Empty where the user wants to leave them.
std::optional<Spacing> AskSpacing(QWidget* window, const Spacing& current);

} // namespace nurvex
