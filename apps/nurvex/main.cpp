#include "apps/nurvex/commands.h"
#include "apps/nurvex/failure.h"
#include "apps/nurvex/view_command.h"

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

} // namespace

int main(int count, char** words) {
    try {
        std::visit(Run(),
                   nurvex::ReadCommandLine(std::vector<std::string>(words + 1, words + count)));
        return nurvex::EXIT_FINE;
    } catch (const nurvex::Failure& failure) {
        std::cerr << "nurvex: " << failure.what() << '\n';
        return failure.GetCode();
    } catch (const std::exception& error) {
        std::cerr << "nurvex: " << nurvex::WordsOf(error, count > 1 ? words[1] : "start") << '\n';
        return nurvex::EXIT_FILES;
    }
}
