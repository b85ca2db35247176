#include "apps/nurvex/steps.h"

#include "apps/nurvex/failure.h"
#include "apps/nurvex/text_fields.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <string_view>
#include <utility>

namespace nurvex {

namespace {

constexpr std::string_view NEXT_STEP = "then";
constexpr std::string_view SAME_STEP = "and";
constexpr std::string_view INSIDE = "in";

/// Each picture of a series is open until all of them are complete.
constexpr std::size_t MOST_STEPS = 500;

/// Wider or taller than this is a slip; no format could hold the picture.
constexpr int LARGEST_SIDE = 10000;

constexpr const char* VERBS = "fold, unfold, hide, show, add, link, remove or resize";

using WordList = std::vector<std::string>;

bool holds_blank(const std::string& word) {
    return word.find(' ') != std::string::npos;
}

/// The words of a step as somebody would type them, in one line.
std::string joined(const WordList& words) {
    std::string text;
    for (std::string word : words) {
        std::replace_if(
            word.begin(), word.end(), [](unsigned char c) { return std::iscntrl(c) != 0; }, '?');
        const bool quoted = word.empty() || holds_blank(word);
        text += (text.empty() ? "" : " ") + (quoted ? '"' + word + '"' : word);
    }
    return text;
}

/// Reads one change after the other from the words of a step.
class StepReader {
public:
    StepReader(std::size_t number, const WordList& given) : words(given) {
        step.number = number;
        step.text = joined(given);
    }

    Step Read() {
        do {
            step.changes.push_back(read_change());
        } while (skip(SAME_STEP));
        if (at < words.size()) {
            RefuseStep(step, shown(words[at]) + " is one word too many" +
                                 (holds_blank(words[at])
                                      ? "; only a caption may hold blanks"
                                      : "; put \"then\" or \"and\" before the next change"));
        }
        return std::move(step);
    }

private:
    Change read_change() {
        Change change;
        const std::string verb = take(VERBS);
        if (verb == "fold" || verb == "unfold") {
            change.verb = verb == "fold" ? Verb::FOLD : Verb::UNFOLD;
            change.node = take_id("the id of a node");
            change.direction = take_direction();
        } else if (verb == "hide" || verb == "show") {
            change.verb = verb == "hide" ? Verb::HIDE : Verb::SHOW;
            change.node = take_id("the id of a node");
        } else if (verb == "add") {
            read_add(change);
        } else if (verb == "link") {
            change.verb = Verb::LINK;
            change.node = take_id("the id of the node that the edge leaves");
            change.target = take_id("the id of the node that the edge enters");
        } else if (verb == "remove") {
            read_remove(change);
        } else if (verb == "resize") {
            change.verb = Verb::RESIZE;
            change.node = take_id("the id of a node");
            change.size = take_size();
        } else {
            RefuseStep(step, "there is no " + shown(verb) + "; say " + VERBS +
                                 (holds_blank(verb) ? ", each word by itself" : ""));
        }
        return change;
    }

    void read_add(Change& change) {
        change.verb = Verb::ADD;
        change.node = take_id("an id for the new node");
        if (!at_end() && words[at] != INSIDE) {
            change.caption = words[at++];
        }
        if (skip(INSIDE)) {
            change.owner = take_id("the id of the owner, or 0 for none");
        }
    }

    void read_remove(Change& change) {
        change.verb = Verb::REMOVE_NODE;
        change.node = take_id("the id of a node");
        if (!at_end()) {
            change.verb = Verb::REMOVE_EDGES;
            change.target = take_id("the id of the node that the edge enters");
        }
    }

    bool at_end() const { return at >= words.size() || words[at] == SAME_STEP; }

    bool skip(std::string_view word) {
        const bool found = at < words.size() && words[at] == word;
        at += found ? 1 : 0;
        return found;
    }

    const std::string& take(const std::string& wanted) {
        if (at_end()) {
            const std::string empty = words.empty() ? "it is empty" : "it begins with \"and\"";
            RefuseStep(step, at == 0 ? empty + "; say " + wanted
                                     : "behind \"" + words[at - 1] + "\" is missing " + wanted);
        }
        return words[at++];
    }

    int take_id(const std::string& wanted) {
        std::string_view text = take(wanted);
        const std::string_view whole = text;
        const Field field = next_field(text);
        if (field.state != FieldState::FINE || field.text != whole) {
            RefuseStep(step, shown(whole) + " is no id; write " + wanted);
        }
        int id = 0;
        const std::string_view digits = whole.substr(whole.front() == '+' ? 1 : 0);
        std::from_chars(digits.data(), digits.data() + digits.size(), id);
        return id;
    }

    nurvex7::FoldDirection take_direction() {
        const std::string& word = take("parents or children");
        if (word != "parents" && word != "children") {
            RefuseStep(step, "say parents or children, not " + shown(word));
        }
        return word == "parents" ? nurvex7::FOLD_PARENTS : nurvex7::FOLD_CHILDREN;
    }

    tamsel7::size<double> take_size() {
        const std::string& word = take("a size as 120x40");
        const char* const end = word.data() + word.size();
        tamsel7::size<double> size;
        const auto width = std::from_chars(word.data(), end, size.width);
        const bool parted = width.ec == std::errc() && width.ptr != end && *width.ptr == 'x';
        const auto height = std::from_chars(parted ? width.ptr + 1 : end, end, size.height);
        const bool sound = parted && height.ec == std::errc() && height.ptr == end;
        const auto fits = [](double side) { return side >= 1 && side <= LARGEST_SIDE; };
        if (!sound || !fits(size.width) || !fits(size.height)) {
            RefuseStep(step, shown(word) + " is no size; write width and height as 120x40, each " +
                                 "from 1 to " + std::to_string(LARGEST_SIDE));
        }
        return size;
    }

    const WordList& words;
    std::size_t at = 0;
    Step step;
};

} // namespace

void RefuseStep(const Step& step, const std::string& reason) {
    throw Failure(EXIT_INPUT, "step " + std::to_string(step.number) + " (" + step.text +
                                  "): " + reason + "; nothing has been drawn");
}

std::vector<Step> ReadSteps(const std::vector<WordList>& lists) {
    std::vector<WordList> parts;
    for (const WordList& list : lists) {
        parts.emplace_back();
        for (const std::string& word : list) {
            if (word == NEXT_STEP) {
                parts.emplace_back();
            } else {
                parts.back().push_back(word);
            }
        }
    }
    if (parts.size() > MOST_STEPS) {
        throw Failure(EXIT_INPUT, std::to_string(parts.size()) + " steps are too many; give " +
                                      std::to_string(MOST_STEPS) + " at most");
    }
    std::vector<Step> steps;
    for (const WordList& part : parts) {
        steps.push_back(StepReader(steps.size() + 1, part).Read());
    }
    return steps;
}

} // namespace nurvex
