#pragma once

#include "apps/nurvex/spacing.h"
#include "apps/nurvex/steps.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace nurvex {

/// `nurvex draw`
struct DrawOptions {
    std::string input;
    std::string output; ///< a `%` in it stands for the number of the picture
    std::vector<Step> steps;
    std::optional<double> scale; ///< what the format takes by itself where it is empty
    Spacing spacing;
    bool dark = false;
    bool report = false;
};

/// `nurvex check`
struct CheckOptions {
    std::string input;
};

/// `nurvex view`
struct ViewOptions {
    std::string input; ///< empty for a window without a graph
};

/// A text that was asked for: a help or the version.
struct Answer {
    std::string text;
};

using Command = std::variant<Answer, DrawOptions, CheckOptions, ViewOptions>;

/// Reads the words behind the name of the program.
/// Errors  a Failure that tells which word is at fault
Command ReadCommandLine(const std::vector<std::string>& words);

} // namespace nurvex
