#include "nurvex7/model/text_graph.h"

#include "nurvex7/foundation/id_map.h"
#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

namespace nurvex7 {

namespace {

constexpr char QUOTE = '"';
constexpr std::string_view THREAD = "Thread";
constexpr std::string_view MAIN = "main";

bool is_blank(char letter) {
    return letter == ' ' || (letter >= '\t' && letter <= '\r');
}

bool is_digit(char letter) {
    return letter >= '0' && letter <= '9';
}

/// Cuts off the letters at the front of which this is true. A search for any of a set of letters
/// would search the set for every letter of the text.
template <typename F>
std::string_view cut_while(std::string_view& text, F is_part) {
    const auto end = std::find_if_not(text.begin(), text.end(), is_part);
    const std::string_view part(text.data(), static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(part.size());
    return part;
}

/// Reads whole numbers one after the other as a stream in the "C" locale would, without the price
/// of a stream for each line.
class NumberReader {
public:
    explicit NumberReader(std::string_view text) : rest(text) {}

    /// Keeps the value where the text has ended or an earlier number was at fault; else 0 for what
    /// is no number, and the limit for what does not fit.
    void read(int& value) {
        cut_while(rest, is_blank);
        if (failed || rest.empty()) {
            failed = true;
            return;
        }
        const bool negative = rest.front() == '-';
        if (negative || rest.front() == '+') {
            rest.remove_prefix(1);
        }
        const std::string_view digits = cut_while(rest, is_digit);
        const long long magnitude = magnitude_of(digits);
        store(digits.empty(), negative ? -magnitude : magnitude, value);
    }

private:
    /// Stops counting where an int is left behind for good.
    static long long magnitude_of(std::string_view digits) {
        long long magnitude = 0;
        for (const char digit : digits) {
            if (magnitude <= 1LL + std::numeric_limits<int>::max()) {
                magnitude = magnitude * 10 + (digit - '0');
            }
        }
        return magnitude;
    }

    void store(bool malformed, long long read_value, int& value) {
        constexpr long long lowest = std::numeric_limits<int>::min();
        constexpr long long highest = std::numeric_limits<int>::max();
        value = static_cast<int>(std::clamp(read_value, lowest, highest));
        failed = malformed || value != read_value;
    }

    std::string_view rest;
    bool failed = false;
};

struct LineParts {
    std::string_view before;
    std::string_view caption;
    std::string_view after;
};

/// A line without a quote is its own caption, and its numbers are looked for in all of it; behind
/// a single quote the rest is both the caption and the text of the numbers.
LineParts split_at_quotes(std::string_view line) {
    const std::size_t first = line.find(QUOTE);
    if (first == std::string_view::npos) {
        return {line, line, line};
    }
    const std::size_t last = line.rfind(QUOTE);
    const std::string_view after = line.substr(last + 1);
    return {line.substr(0, first), first == last ? after : line.substr(first + 1, last - first - 1),
            after};
}

bool holds(std::string_view text, std::string_view word) {
    return text.find(word) != std::string_view::npos;
}

/// One run of Load.
class TextGraphLoader {
public:
    explicit TextGraphLoader(const Node& root) : top(root) {}

    /// False where the line names a node that is not there.
    bool take_line(const std::string& line);
    /// False where an owner is not there.
    bool apply_owners();
    void apply_thread_view();

private:
    struct LoadedNode {
        Node node;
        int owner_id;
    };

    void take_node(NodeLine line);
    bool take_edge(const EdgeLine& line);
    const LoadedNode* find(int file_id) const;
    void show_path(std::size_t thread);

    Node top;
    TextSection section = TextSection::TYPES;
    std::vector<LoadedNode> loaded; ///< the first node of each id, in file order
    IdMap<std::size_t> place_of;    ///< by id in the file
    std::vector<Node> threads;      ///< in file order
    IdMap<std::size_t> shown_by;    ///< the first thread whose path a node lies on, by node id
};

bool TextGraphLoader::take_line(const std::string& line) {
    if (ReadSectionHeader(line, section)) {
        return true;
    }
    switch (section) {
    case TextSection::NODES:
    case TextSection::CLUSTERS:
        take_node(ReadNodeLine(line));
        return true;
    case TextSection::EDGES:
        return take_edge(ReadEdgeLine(line));
    case TextSection::TYPES:
        break;
    }
    return true;
}

void TextGraphLoader::take_node(NodeLine line) {
    if (line.id == -1) {
        return;
    }
    Node node = top.AddNode();
    node.SetCaption(line.caption);
    // A second node of an id comes into being all the same, but nothing can refer to it.
    if (place_of.find(line.id) == nullptr) {
        place_of[line.id] = loaded.size();
        loaded.push_back({node, line.owner});
    }
    if (holds(line.caption, THREAD)) {
        threads.push_back(node);
    }
}

bool TextGraphLoader::take_edge(const EdgeLine& line) {
    if (line.from == -1) {
        return true;
    }
    const LoadedNode* const from = find(line.from);
    const LoadedNode* const to = find(line.to);
    if (from == nullptr || to == nullptr) {
        return false;
    }
    Node source = from->node;
    source.LinkTo(to->node).SetCaption(line.caption);
    return true;
}

const TextGraphLoader::LoadedNode* TextGraphLoader::find(int file_id) const {
    const std::size_t* const place = place_of.find(file_id);
    return place != nullptr ? &loaded[*place] : nullptr;
}

bool TextGraphLoader::apply_owners() {
    bool all_found = true;
    place_of.for_each([&](int, std::size_t place) {
        const int owner_id = loaded[place].owner_id;
        if (owner_id == 0 || !all_found) {
            return;
        }
        const LoadedNode* const owner = find(owner_id);
        if (owner == nullptr) {
            all_found = false;
            return;
        }
        loaded[place].node.SetOwner(owner->node);
    });
    return all_found;
}

void TextGraphLoader::apply_thread_view() {
    if (threads.empty()) {
        return;
    }
    ForEachNodeIn(top, Hide, true, false);
    for (std::size_t i = 0; i < threads.size(); ++i) {
        Show(threads[i]);
        show_path(i);
    }
}

// Deliberate: a cycle of "main" nodes is followed for ever; that there is none is the caller's
// duty. What an earlier thread has shown to its end is not shown again: it would change nothing.
void TextGraphLoader::show_path(std::size_t thread) {
    graph_ptr<INodeImpl> at = threads[thread].get_impl();
    while (at.get() != nullptr && shown_by.find_or_make(at->get_id(), thread) >= thread) {
        NodeSet children(top.get_vis(), at->get_children());
        at.reset();
        for (int i = 0; i < children.GetCount(); ++i) {
            const Node child = children.GetItem(i);
            Show(child);
            if (at.get() == nullptr && holds(child.GetCaption(), MAIN)) {
                at = child.get_impl();
            }
        }
    }
}

bool read_graph(TextGraphLoader& loader, std::istream& in) {
    std::string line;
    // A stream that fails before its end gives nothing more, so its failure counts as the end.
    while (in.good()) {
        std::getline(in, line);
        if (!loader.take_line(line)) {
            return false;
        }
    }
    return loader.apply_owners();
}

} // namespace

bool ReadSectionHeader(const std::string& line, TextSection& section) {
    static constexpr std::array<std::pair<std::string_view, TextSection>, 4> headers{
        {{"[types]", TextSection::TYPES},
         {"[nodes]", TextSection::NODES},
         {"[clusters]", TextSection::CLUSTERS},
         {"[edges]", TextSection::EDGES}}};
    for (const auto& [text, named] : headers) {
        if (line == text) {
            section = named;
            return true;
        }
    }
    return false;
}

NodeLine ReadNodeLine(const std::string& line) {
    const LineParts parts = split_at_quotes(line);
    NodeLine result;
    NumberReader(parts.before).read(result.id);
    result.caption = parts.caption;
    NumberReader after(parts.after);
    after.read(result.type);
    after.read(result.owner);
    return result;
}

EdgeLine ReadEdgeLine(const std::string& line) {
    const LineParts parts = split_at_quotes(line);
    EdgeLine result;
    NumberReader before(parts.before);
    before.read(result.from);
    before.read(result.to);
    result.caption = parts.caption;
    return result;
}

int Load(graph_ptr2<Graph> graph, std::istream& in) {
    std::string title;
    std::getline(in, title); // the first line is the writer's own
    Node root = graph->GetRoot();
    root.Remove();
    TextGraphLoader loader(root);
    if (!read_graph(loader, in)) {
        root.Remove();
        return 0;
    }
    loader.apply_thread_view();
    ForEachNodeIn(root, MarkOld, true, true);
    return 1;
}

} // namespace nurvex7
