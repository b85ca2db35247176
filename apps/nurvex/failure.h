#pragma once

#include <exception>
#include <new>
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

/// Why something could not be done with a file, in words for a user: those of a Failure, or what is
/// meant by the others.
inline std::string WordsOf(const std::exception& error, const std::string& file) {
    if (dynamic_cast<const Failure*>(&error) != nullptr) {
        return error.what();
    }
    if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) {
        return file + ": there is not enough memory for this; close other programs, or take a part "
                      "of the graph";
    }
    return file + ": the program ran into a fault of its own: " + error.what();
}

} // namespace nurvex
