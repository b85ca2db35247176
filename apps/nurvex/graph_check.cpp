#include "apps/nurvex/graph_check.h"

#include "apps/nurvex/fault_list.h"
#include "apps/nurvex/text_fields.h"
#include "nurvex7/model/text_graph.h"

#include <algorithm>
#include <optional>
#include <sstream>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace nurvex {

using nurvex7::EdgeLine;
using nurvex7::NodeLine;
using nurvex7::TextSection;

namespace {

constexpr int NONE = -1;

bool holds(std::string_view text, std::string_view word) {
    return text.find(word) != std::string_view::npos;
}

/// What the author of a header line meant, where that can be told.
std::optional<TextSection> meant_section(std::string_view line) {
    std::string name(trimmed(line));
    std::transform(name.begin(), name.end(), name.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    TextSection section{};
    return nurvex7::ReadSectionHeader(name, section) ? std::optional(section) : std::nullopt;
}

/// Calls `found(members)` for every cycle that following `next` from the starts runs into, once.
template <typename Found>
void find_cycles(const std::vector<int>& next, const std::vector<int>& starts, Found found) {
    std::vector<int> seen_from(next.size(), NONE);
    for (const int start : starts) {
        int at = start;
        while (at != NONE && seen_from[static_cast<std::size_t>(at)] == NONE) {
            seen_from[static_cast<std::size_t>(at)] = start;
            at = next[static_cast<std::size_t>(at)];
        }
        if (at == NONE || seen_from[static_cast<std::size_t>(at)] != start) {
            continue;
        }
        std::vector<int> members{at};
        for (int member = next[static_cast<std::size_t>(at)]; member != at;) {
            members.push_back(member);
            member = next[static_cast<std::size_t>(member)];
        }
        found(members);
    }
}

/// One run over a file. Where a line is at fault, what its author meant is taken for what follows,
/// so that one slip is reported once.
class TextGraphCheck {
public:
    std::vector<Fault> run(std::istream& in);

    GraphSize size;

private:
    /// Where a content line stands. What is below a header that nobody knows is let be.
    enum class Place { ABOVE_ALL, LET_BE, NODES, EDGES };

    struct CheckedNode {
        int id;
        int owner_id; ///< 0 also where the number is at fault
        std::size_t line;
        bool is_first; ///< no line above has this id
        bool is_main;
        bool is_thread;
        int next_main = NONE; ///< place of the first "main" node that an edge leads to
    };

    struct LooseEnd {
        std::size_t line;
        int id;
        bool is_source;
    };

    template <typename... Parts>
    void report(const Parts&... parts) {
        report_at(line, parts...);
    }
    template <typename... Parts>
    void report_at(std::size_t at, const Parts&... parts) {
        faults.add(at, [&] {
            std::ostringstream message;
            (message << ... << parts);
            return std::move(message).str();
        });
    }

    void check_first_line(const std::string& text);
    void check_line(const std::string& text);
    bool check_header(const std::string& text);
    void check_encoding(const std::string& text);
    void enter(TextSection section);

    void check_node_line(const std::string& text);
    void check_quotes_of_node(const std::string& text);
    bool check_node_id(const Field& field, int id);
    bool check_numbers_behind_caption(const std::string& text);
    void add_node(const NodeLine& node, int owner_id);

    void check_edge_line(const std::string& text);
    int find_end(int id, bool is_source);
    bool check_number(const Field& field, std::string_view what);

    void check_whole();
    void check_loose_ends();
    void check_owners();
    void check_threads();
    int find(int id) const;

    FaultList faults;
    std::size_t line = 0;
    Place place = Place::ABOVE_ALL;
    std::size_t nodes_header = 0;   ///< line of the first header of nodes
    std::size_t carriage_line = 0;  ///< the first line that ends with a carriage return
    std::size_t carriage_count = 0; ///< of such lines
    std::size_t foreign_line = 0;   ///< the first node or edge that is not in UTF-8
    std::size_t foreign_count = 0;  ///< of such lines
    bool told_above_all = false;
    bool has_node_lines = false;
    std::vector<CheckedNode> nodes;
    std::unordered_map<int, int> place_of; ///< places of the first nodes, by id
    std::vector<LooseEnd> loose_ends;
};

std::vector<Fault> TextGraphCheck::run(std::istream& in) {
    for (std::string text; std::getline(in, text);) {
        ++line;
        if (holds(text, std::string_view("\0", 1))) {
            report("a NUL byte: this is no text file, or not in an encoding that is known here; "
                   "nothing below was checked");
            return faults.take();
        }
        if (line == 1) {
            check_first_line(text);
        } else {
            check_line(text);
        }
    }
    if (in.bad()) {
        report_at(line + 1, "the file cannot be read from here on");
    }
    check_whole();
    return faults.take();
}

// The loader skips the first line unread.
void TextGraphCheck::check_first_line(const std::string& text) {
    if (const auto section = meant_section(text)) {
        report("the first line is always skipped, so this header has no effect; put a line with a "
               "title above it");
        enter(*section);
    }
    if (text.find('\r') < text.size() - 1) {
        report("carriage returns stand inside this line; end the lines with newlines");
    }
}

void TextGraphCheck::check_line(const std::string& text) {
    if (text.ends_with('\r')) {
        carriage_line = carriage_count++ == 0 ? line : carriage_line;
    }
    if (trimmed(text).empty() || check_header(text)) {
        return;
    }
    switch (place) {
    case Place::ABOVE_ALL:
        if (!std::exchange(told_above_all, true)) {
            report("this line stands above the first section header and is ignored; put [nodes] or "
                   "another header above it");
        }
        break;
    case Place::NODES:
        check_encoding(text);
        check_node_line(text);
        break;
    case Place::EDGES:
        check_encoding(text);
        check_edge_line(text);
        break;
    case Place::LET_BE:
        break;
    }
}

void TextGraphCheck::check_encoding(const std::string& text) {
    if (!is_utf8(text)) {
        foreign_line = foreign_count++ == 0 ? line : foreign_line;
    }
}

/// True where the line is a header or was meant to be one.
bool TextGraphCheck::check_header(const std::string& text) {
    const std::string_view header = trimmed(text);
    if (header.front() != '[' || holds(header, "\"")) {
        return false;
    }
    const std::optional<TextSection> section = meant_section(text);
    if (!section) {
        report("unknown header ", shown(header),
               "; the sections are [nodes], [clusters], [edges] and [types]");
        place = Place::LET_BE;
        return true;
    }
    TextSection exact{};
    const std::string without_return = text.substr(0, text.size() - (text.back() == '\r' ? 1 : 0));
    if (!nurvex7::ReadSectionHeader(without_return, exact)) {
        report("the header ", shown(header),
               " is not known in this form; write it in small letters with nothing around it");
    }
    enter(*section);
    return true;
}

void TextGraphCheck::enter(TextSection section) {
    switch (section) {
    case TextSection::NODES:
    case TextSection::CLUSTERS:
        nodes_header = nodes_header == 0 ? line : nodes_header;
        place = Place::NODES;
        break;
    case TextSection::EDGES:
        place = Place::EDGES;
        break;
    case TextSection::TYPES:
        place = Place::LET_BE;
        break;
    }
}

// Nodes

void TextGraphCheck::check_node_line(const std::string& text) {
    has_node_lines = true;
    const NodeLine node = nurvex7::ReadNodeLine(text);
    check_quotes_of_node(text);
    std::string_view before = std::string_view(text).substr(0, text.find('"'));
    const bool defines = check_node_id(next_field(before), node.id);
    const bool has_owner = check_numbers_behind_caption(text);
    if (defines) {
        add_node(node, has_owner ? node.owner : 0);
    }
}

void TextGraphCheck::check_quotes_of_node(const std::string& text) {
    const auto quotes = std::count(text.begin(), text.end(), '"');
    if (quotes == 0) {
        report("node line without a caption in double quotes; a node is: id \"caption\" type "
               "owner");
    } else if (quotes == 1) {
        report("only one double quote; put one at either end of the caption");
    }
}

/// True where later lines may refer to the node.
bool TextGraphCheck::check_node_id(const Field& field, int id) {
    if (field.state == FieldState::MISSING) {
        report("node line without an id in front of the caption; a node is: id \"caption\" type "
               "owner");
        return false;
    }
    const bool fine = check_number(field, "the id of the node");
    if (fine && id == -1) {
        report("the id -1 stands for no node, so that the line is ignored; choose another number");
        return false;
    }
    return fine || (field.state == FieldState::MALFORMED && id != 0);
}

/// True where the owner is a number.
bool TextGraphCheck::check_numbers_behind_caption(const std::string& text) {
    const std::size_t last = text.rfind('"');
    if (last == std::string::npos || text.find('"') == last) {
        return false; // what the numbers are cannot be told, and the quotes were reported
    }
    std::string_view after = std::string_view(text).substr(last + 1);
    const Field type = next_field(after);
    const Field owner = next_field(after);
    const bool type_fine = check_number(type, "the type of the node");
    const bool owner_fine = check_number(owner, "the owner of the node");
    if (owner.state == FieldState::MISSING) {
        report("fewer than two numbers after the caption; write the type and the owner, which is 0 "
               "for a node at the top");
    }
    return type_fine && owner_fine;
}

void TextGraphCheck::add_node(const NodeLine& node, int owner_id) {
    const int own_place = static_cast<int>(nodes.size());
    const auto [first, is_first] = place_of.emplace(node.id, own_place);
    ++size.nodes;
    nodes.push_back({node.id, owner_id, line, is_first, holds(node.caption, "main"),
                     holds(node.caption, "Thread")});
    if (!is_first) {
        const std::size_t first_line = nodes[static_cast<std::size_t>(first->second)].line;
        report("the id ", node.id, " is taken by the node of line ", first_line,
               "; choose another number");
    } else if (owner_id == node.id && owner_id != 0) {
        report("node ", node.id, " is its own owner; name another owner, or 0 for none");
    }
}

// Edges

void TextGraphCheck::check_edge_line(const std::string& text) {
    ++size.edges;
    const EdgeLine edge = nurvex7::ReadEdgeLine(text);
    if (std::count(text.begin(), text.end(), '"') == 1) {
        report("only one double quote; put one at either end of the caption");
    }
    std::string_view before = std::string_view(text).substr(0, text.find('"'));
    const Field source = next_field(before);
    const Field target = next_field(before);
    const bool source_fine = check_number(source, "the source of the edge");
    const bool target_fine = check_number(target, "the target of the edge");
    if (target.state == FieldState::MISSING) {
        report("edge line with fewer than two numbers; an edge is: source target \"caption\"");
    }
    const int from = source_fine ? find_end(edge.from, true) : NONE;
    const int to = target_fine ? find_end(edge.to, false) : NONE;
    if (from != NONE && to != NONE && nodes[static_cast<std::size_t>(to)].is_main) {
        int& next = nodes[static_cast<std::size_t>(from)].next_main;
        next = next == NONE ? to : std::min(next, to);
    }
}

int TextGraphCheck::find_end(int id, bool is_source) {
    const int end = find(id);
    if (end == NONE) {
        loose_ends.push_back({line, id, is_source});
    }
    return end;
}

bool TextGraphCheck::check_number(const Field& field, std::string_view what) {
    if (field.state == FieldState::MALFORMED) {
        report(what, " is ", shown(field.text), ", which is no whole number");
    } else if (field.state == FieldState::TOO_LARGE) {
        report(what, " is ", shown(field.text), "; numbers go from -2147483648 to 2147483647");
    }
    return field.state == FieldState::FINE;
}

int TextGraphCheck::find(int id) const {
    const auto known = place_of.find(id);
    return known != place_of.end() ? known->second : NONE;
}

// The file as a whole

void TextGraphCheck::check_whole() {
    if (carriage_count > 0) {
        report_at(carriage_line, "carriage returns end ", carriage_count,
                  carriage_count == 1 ? " line" : " lines",
                  ", this one first; save the file with newlines alone");
    }
    if (foreign_count > 0) {
        report_at(foreign_line, "letters that are not in UTF-8 stand in ", foreign_count,
                  foreign_count == 1 ? " line" : " lines",
                  ", this one first, and would be lost; save the file in UTF-8");
    }
    if (line == 0) {
        report_at(1, "the file is empty; put a title on its first line, [nodes] on the second, and "
                     "the nodes below that");
    } else if (nodes_header == 0) {
        report_at(1, "the file has no [nodes] section, so it describes no graph; put [nodes] on a "
                     "line below the first, and the nodes below that");
    } else if (!has_node_lines) {
        report_at(nodes_header, "no section of nodes holds a node; add some below this header");
    }
    check_loose_ends();
    check_owners();
    check_threads();
}

void TextGraphCheck::check_loose_ends() {
    for (const LooseEnd& end : loose_ends) {
        const int later = find(end.id);
        const std::string_view verb = end.is_source ? "edge starts at node " : "edge ends at node ";
        if (later == NONE) {
            report_at(end.line, verb, end.id,
                      ", which no line above defines; add the node or correct the number");
        } else {
            const std::size_t later_line = nodes[static_cast<std::size_t>(later)].line;
            report_at(end.line, verb, end.id, ", which no line above defines, only line ",
                      later_line, " below; move the edge below its nodes");
        }
    }
}

void TextGraphCheck::check_owners() {
    std::vector<int> owner_of(nodes.size(), NONE);
    std::vector<int> owned;
    std::vector<char> owns(nodes.size(), 0);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const CheckedNode& node = nodes[i];
        if (!node.is_first || node.owner_id == 0 || node.owner_id == node.id) {
            continue;
        }
        owner_of[i] = find(node.owner_id);
        owned.push_back(static_cast<int>(i));
        if (owner_of[i] == NONE) {
            report_at(node.line, "the owner of node ", node.id, " is node ", node.owner_id,
                      ", which no line defines; add the node, correct the number, or write 0 for a "
                      "node at the top");
        } else {
            size.clusters += std::exchange(owns[static_cast<std::size_t>(owner_of[i])], 1) == 0;
        }
    }
    find_cycles(owner_of, owned, [&](const std::vector<int>& members) {
        const CheckedNode& first =
            nodes[static_cast<std::size_t>(*std::min_element(members.begin(), members.end()))];
        report_at(first.line, "node ", first.id,
                  " is inside itself: following its owners "
                  "leads back to it over ",
                  members.size() - 1, members.size() == 2 ? " other node" : " other nodes",
                  "; give one of them another owner");
    });
}

// The thread view goes from a "Thread" node to its first child with "main" in its caption and on
// from there. It marks nothing as visited.
void TextGraphCheck::check_threads() {
    std::vector<int> next(nodes.size(), NONE);
    std::vector<int> threads;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        next[i] = nodes[i].next_main;
        if (nodes[i].is_thread) {
            threads.push_back(static_cast<int>(i));
        }
    }
    find_cycles(next, threads, [&](const std::vector<int>& members) {
        const CheckedNode& first =
            nodes[static_cast<std::size_t>(*std::min_element(members.begin(), members.end()))];
        report_at(first.line,
                  "the path of \"main\" nodes below a \"Thread\" node comes back to node ",
                  first.id, " after ", members.size(), members.size() == 1 ? " edge" : " edges",
                  " and would be followed for ever; remove one of its edges or rename the node");
    });
}

} // namespace

std::vector<Fault> check_text_graph(std::istream& in, GraphSize* size) {
    TextGraphCheck check;
    std::vector<Fault> faults = check.run(in);
    if (size != nullptr) {
        *size = check.size;
    }
    return faults;
}

} // namespace nurvex
