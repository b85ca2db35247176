#pragma once

#include <stdexcept>
#include <string>

namespace nurvex {

/// How the program ends.
enum ExitCode : int {
    EXIT_FINE = 0,
    EXIT_FILES = 1, ///< something cannot be read or written
    EXIT_INPUT = 2  ///< a graph with faults, or a command line that says nothing sensible
};

/// The reason why a command cannot be carried out, in words for its user: what is wrong, where,
/// and what to do.
class Failure : public std::runtime_error {
public:
    Failure(ExitCode given_code, const std::string& message)
        : std::runtime_error(message), code(given_code) {}

    ExitCode GetCode() const { return code; }

private:
    ExitCode code;
};

} // namespace nurvex
