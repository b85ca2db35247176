#include "apps/nurvex/commands.h"
#include "apps/nurvex/failure.h"
#include "apps/nurvex/view_command.h"

#include <cerrno>
#include <cstring>
#include <exception>
#include <iostream>
#include <string>
#include <variant>
#include <vector>

namespace {

struct Run {
    void operator()(const nurvex::Answer& answer) const { std::cout << answer.text; }
    void operator()(const nurvex::DrawOptions& options) const { nurvex::RunDraw(options); }
    void operator()(const nurvex::CheckOptions& options) const { nurvex::RunCheck(options); }
    void operator()(const nurvex::ViewOptions& options) const { nurvex::RunView(options); }
};

/// What was to be told is not told before it has left the program.
void flush_output() {
    errno = 0;
    std::cout.flush();
    if (!std::cout) {
        const std::string reason = errno != 0 ? std::strerror(errno) : "write error";
        throw nurvex::Failure(nurvex::EXIT_FILES, "standard output: cannot be written: " + reason +
                                                      "; what was to be told there is lost");
    }
}

} // namespace

int main(int count, char** words) {
    try {
        std::visit(Run(),
                   nurvex::ReadCommandLine(std::vector<std::string>(words + 1, words + count)));
        flush_output();
        return nurvex::EXIT_FINE;
    } catch (const nurvex::Failure& failure) {
        std::cerr << "nurvex: " << failure.what() << '\n';
        return failure.GetCode();
    } catch (const std::exception& error) {
        std::cerr << "nurvex: " << nurvex::WordsOf(error, count > 1 ? words[1] : "start") << '\n';
        return nurvex::EXIT_FILES;
    }
}
