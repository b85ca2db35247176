#include "apps/nurvex/command_line.h"

#include "apps/nurvex/failure.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <sstream>
#include <string_view>

#ifndef NURVEX_VERSION
#define NURVEX_VERSION "unknown"
#endif

namespace nurvex {

namespace {

constexpr double SMALLEST_SCALE = 0.0001; // a million nodes fit into a PNG at seven times that
constexpr double LARGEST_SCALE = 1000;

constexpr const char* MAIN_HELP =
    R"(nurvex draws directed graphs with nested clusters, level by level.

Usage:
  nurvex draw FILE -o OUT [options]   draw a text graph as SVG, PNG or PDF, also step by step
  nurvex check FILE                   look for faults in a text graph
  nurvex view [FILE]                  show a text graph in a window

  nurvex COMMAND --help               more about a command
  nurvex --version                    the version

FILE may be - for standard input.
)";

constexpr const char* DRAW_HELP = R"(Draws a text graph.

Usage: nurvex draw FILE [--then STEP ...] -o OUT [options]

  FILE               the text graph; - for standard input
  -o, --output OUT   the picture; its suffix tells the format: .svg, .png or .pdf.
                     A % in OUT stands for the number of the picture: 0 is the graph as it is in
                     FILE, then comes one for each step. Without it the last one alone is drawn.

Options:
  --then STEP ...    changes the graph step by step; whatever stays keeps its place, and what is
                     new has an accent. Given again, it goes on with the next step.
  --report           tells for each step what has kept its place
  --scale S          magnifies the picture (SVG and PDF: 1; PNG: 2, or what fits)
  --level-gap N      room between two levels (36)
  --node-gap N       room between two nodes of a level (14)
  --edge-gap N       room between two edges side by side (4)
  --edge-margin N    length of the straight piece of an edge beside its node (10)
  --dark             light lines on a dark ground
  -h, --help         this text
S goes from 0.0001 to 1000, and N from 0 to 1000.

A STEP is one of these, or several with "and" between them; steps have "then" between them.
  fold ID children|parents     hides the neighbours of a node in one direction
  unfold ID children|parents   shows them again
  hide ID, show ID             a node, with all that it owns
  add ID [CAPTION] [in OWNER]  a new node, in a cluster or in another node, which becomes one
  link ID ID                   a new edge, from the first node to the second
  remove ID                    a node, with all that it owns and all their edges
  remove ID ID                 the edges from the first node to the second
  resize ID WxH                gives a node that owns nothing a width and a height
An ID is the number of a node in FILE, or the one that "add" gave it. For example:
  nurvex draw shop.txt --then fold 31 children then add 90 "gift cards" in 220 and link 31 90 \
                       -o shop%.svg --report

The report has a line for each step: which owners were updated or laid out anew (root is the whole
graph), how many nodes were drawn before and are drawn still, how many of them kept their level,
their place among each other on the level, and their y, how many moved up or down and how far at
most, how many nodes are new in the picture, and the time that the layout took.

An older OUT is replaced only when all new pictures are complete.
Exit status: 0 fine, 1 cannot read or write, 2 faults in FILE or on the command line.
)";

constexpr const char* CHECK_HELP = R"(Looks for faults in a text graph and tells their lines.

Usage: nurvex check FILE

  FILE               the text graph; - for standard input
  -h, --help         this text

Exit status: 0 no faults, 1 cannot read, 2 faults in FILE or on the command line.
)";

constexpr const char* VIEW_HELP =
    R"(Shows a text graph in a window, to be folded, searched and zoomed.

Usage: nurvex view [FILE]

  FILE               the text graph; without it, one can be opened from the menu
  -h, --help         this text

Exit status: 0 fine, 1 there is no display, 2 faults on the command line.
)";

[[noreturn]] void refuse(const std::string& message, const std::string& help) {
    throw Failure(EXIT_INPUT, message + "; see: nurvex " + help);
}

/// The words of one command, taken from the front to the back.
class Words {
public:
    Words(const std::vector<std::string>& given, std::string given_command)
        : words(given), command(std::move(given_command)) {}

    /// All words up to the next option; an id below zero is none.
    std::vector<std::string> TakeList() {
        std::vector<std::string> list;
        if (attached) {
            list.push_back(*attached);
        }
        const auto is_option = [](const std::string& text) {
            return text.size() > 1 && text[0] == '-' && (text[1] < '0' || text[1] > '9');
        };
        while (at < words.size() && !is_option(words[at])) {
            list.push_back(words[at++]);
        }
        return list;
    }

    /// The next word, split at the equals sign of `--name=value`. False at the end.
    bool Next() {
        if (at >= words.size()) {
            return false;
        }
        word = words[at++];
        attached.reset();
        const std::size_t equals = word.find('=');
        if (word.starts_with("--") && equals != std::string::npos) {
            attached = word.substr(equals + 1);
            word.resize(equals);
        }
        return true;
    }

    bool Is(std::string_view name) const { return word == name; }
    bool IsOption() const { return word.size() > 1 && word.front() == '-'; }
    const std::string& GetWord() const { return word; }

    std::string TakeValue() {
        if (attached) {
            return *attached;
        }
        if (at >= words.size()) {
            Refuse(word + " needs a value");
        }
        return words[at++];
    }

    double TakeNumber(double least, double most) {
        const std::string name = word;
        const std::string text = TakeValue();
        double value = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (error != std::errc() || end != text.data() + text.size() ||
            !(value >= least && value <= most)) {
            std::ostringstream range;
            range << " needs a number from " << least << " to " << most << ", not \"";
            Refuse(name + range.str() + text + "\"");
        }
        return value;
    }

    void TakeFlag() const {
        if (attached) {
            Refuse(word + " takes no value");
        }
    }

    [[noreturn]] void Refuse(const std::string& message) const {
        refuse(message, command + " --help");
    }

private:
    const std::vector<std::string>& words;
    std::string command;
    std::string word;
    std::optional<std::string> attached;
    std::size_t at = 1;
};

void take_file(const Words& words, std::string& file) {
    if (words.IsOption()) {
        words.Refuse("unknown option " + words.GetWord());
    }
    if (words.GetWord().empty()) {
        words.Refuse("the name of FILE is empty");
    }
    if (!file.empty()) {
        words.Refuse("one FILE at a time: \"" + words.GetWord() + "\" is one too many");
    }
    file = words.GetWord();
}

double* find_spacing(DrawOptions& options, const Words& words) {
    if (words.Is("--level-gap")) {
        return &options.spacing.level_gap;
    }
    if (words.Is("--node-gap")) {
        return &options.spacing.node_gap;
    }
    if (words.Is("--edge-gap")) {
        return &options.spacing.edge_gap;
    }
    return words.Is("--edge-margin") ? &options.spacing.edge_margin : nullptr;
}

Command read_draw(const std::vector<std::string>& given) {
    DrawOptions options;
    std::vector<std::vector<std::string>> step_lists;
    Words words(given, "draw");
    while (words.Next()) {
        if (words.Is("--help") || words.Is("-h")) {
            return Answer{DRAW_HELP};
        }
        if (words.Is("-o") || words.Is("--output")) {
            options.output = words.TakeValue();
        } else if (words.Is("--scale")) {
            options.scale = words.TakeNumber(SMALLEST_SCALE, LARGEST_SCALE);
        } else if (words.Is("--dark")) {
            words.TakeFlag();
            options.dark = true;
        } else if (words.Is("--then")) {
            step_lists.push_back(words.TakeList());
        } else if (words.Is("--report")) {
            words.TakeFlag();
            options.report = true;
        } else if (double* spacing = find_spacing(options, words)) {
            *spacing = words.TakeNumber(0, Spacing::MOST);
        } else {
            take_file(words, options.input);
        }
    }
    if (options.input.empty()) {
        words.Refuse("draw needs a FILE");
    }
    if (options.output.empty()) {
        words.Refuse("draw needs -o OUT, the picture to write");
    }
    if (std::count(options.output.begin(), options.output.end(), '%') > 1) {
        words.Refuse("one % in OUT is enough: it stands for the number of the picture");
    }
    if (options.report && step_lists.empty()) {
        words.Refuse("--report tells about steps; give some with --then");
    }
    options.steps = ReadSteps(step_lists);
    return options;
}

Command read_check(const std::vector<std::string>& given) {
    CheckOptions options;
    Words words(given, "check");
    while (words.Next()) {
        if (words.Is("--help") || words.Is("-h")) {
            return Answer{CHECK_HELP};
        }
        take_file(words, options.input);
    }
    if (options.input.empty()) {
        words.Refuse("check needs a FILE");
    }
    return options;
}

Command read_view(const std::vector<std::string>& given) {
    ViewOptions options;
    Words words(given, "view");
    while (words.Next()) {
        if (words.Is("--help") || words.Is("-h")) {
            return Answer{VIEW_HELP};
        }
        take_file(words, options.input);
    }
    if (options.input == "-") {
        words.Refuse("view cannot show standard input: it could not be opened again");
    }
    return options;
}

} // namespace

Command ReadCommandLine(const std::vector<std::string>& words) {
    if (words.empty()) {
        throw Failure(EXIT_INPUT, std::string("what shall be done?\n\n") + MAIN_HELP);
    }
    const std::string& first = words.front();
    if (first == "--help" || first == "-h" || first == "help") {
        return Answer{MAIN_HELP};
    }
    if (first == "--version") {
        return Answer{"nurvex " NURVEX_VERSION "\n"};
    }
    if (first == "draw") {
        return read_draw(words);
    }
    if (first == "check") {
        return read_check(words);
    }
    if (first == "view") {
        return read_view(words);
    }
    refuse("unknown command \"" + first + "\"", "--help");
}

} // namespace nurvex
