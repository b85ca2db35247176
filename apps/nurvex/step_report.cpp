#include "apps/nurvex/step_report.h"

#include "nurvex7/model/queries.h"

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <sstream>
#include <tuple>
#include <utility>

namespace nurvex {

using nurvex7::IsRoot;
using nurvex7::Node;

namespace {

/// Sums of the same numbers in another order differ by less.
constexpr double NO_MOVE = 1e-6;

std::string in_words(const Drawing::Passage& passage, const NumberedGraph& graph) {
    std::string text;
    const auto append = [&](const char* verb, const std::vector<Node>& owners) {
        if (owners.empty()) {
            return;
        }
        text += (text.empty() ? "" : ", ") + std::string(verb);
        for (const Node& owner : owners) {
            text += IsRoot(owner) ? " root" : ' ' + std::to_string(graph.FileIdOf(owner));
        }
    };
    append("make", passage.made);
    append("update", passage.updated);
    return text;
}

std::string fixed(double number) {
    std::ostringstream out;
    out << std::fixed << std::setprecision(1) << number;
    return out.str();
}

using Line = std::vector<std::string>;

/// How many characters a text in UTF-8 shows.
std::size_t width_of(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
    }));
}

/// Texts to the left, numbers to the right.
void print_table(std::ostream& out, const std::vector<Line>& lines, std::size_t texts) {
    std::vector<std::size_t> widths(lines.front().size());
    for (const Line& line : lines) {
        for (std::size_t i = 0; i < line.size(); ++i) {
            widths[i] = std::max(widths[i], width_of(line[i]));
        }
    }
    for (const Line& line : lines) {
        for (std::size_t i = 0; i < line.size(); ++i) {
            const std::string blanks(widths[i] - width_of(line[i]), ' ');
            out << (i == 0 ? "" : "  ") << (i < texts ? line[i] + blanks : blanks + line[i]);
        }
        out << '\n';
    }
}

} // namespace

StepReport::StepReport(const Drawing& drawing) : last(places_in(drawing)) {}

StepReport::Places StepReport::places_in(const Drawing& drawing) {
    Places places;
    for (const Node& node : drawing.GetNodes()) {
        places[node.GetID()] = {node.GetOwner().GetID(), drawing.LevelOf(node),
                                node.GetPosition().y};
    }
    return places;
}

/// The nodes that stand on the same level before and after, in the order of each level: how many
/// have their place in both.
std::size_t StepReport::count_kept_order(const Places& before, const Places& after) {
    using Entry = std::tuple<int, int, double, int>; // owner, level, y, id
    std::vector<Entry> order_before;
    std::vector<Entry> order_after;
    for (const auto& [id, now] : after) {
        const auto was = before.find(id);
        if (was != before.end() && was->second.level == now.level) {
            order_before.emplace_back(now.owner, now.level, was->second.y, id);
            order_after.emplace_back(now.owner, now.level, now.y, id);
        }
    }
    std::sort(order_before.begin(), order_before.end());
    std::sort(order_after.begin(), order_after.end());
    std::size_t kept = 0;
    for (std::size_t i = 0; i < order_after.size(); ++i) {
        kept += std::get<3>(order_before[i]) == std::get<3>(order_after[i]) ? 1 : 0;
    }
    return kept;
}

void StepReport::Add(const Step& step, const Drawing::Passage& passage, const Drawing& drawing,
                     const NumberedGraph& graph) {
    Row row;
    row.step = std::to_string(step.number) + ' ' + step.text;
    row.laid_out = in_words(passage, graph);
    row.milliseconds = passage.milliseconds;
    Places now = places_in(drawing);
    for (const auto& [id, place] : now) {
        const auto was = last.find(id);
        if (was == last.end()) {
            ++row.fresh;
            continue;
        }
        ++row.old;
        row.kept_level += was->second.level == place.level ? 1 : 0;
        const double moved = std::abs(place.y - was->second.y);
        row.moved += moved > NO_MOVE ? 1 : 0;
        row.farthest = std::max(row.farthest, moved);
    }
    row.kept_order = count_kept_order(last, now);
    rows.push_back(std::move(row));
    last = std::move(now);
}

void StepReport::Print(std::ostream& out) const {
    std::vector<Line> lines{
        {"step", "laid out", "old", "level", "order", "y", "moved", "by", "new", "ms"}};
    for (const Row& row : rows) {
        lines.push_back({row.step, row.laid_out, std::to_string(row.old),
                         std::to_string(row.kept_level), std::to_string(row.kept_order),
                         std::to_string(row.old - row.moved), std::to_string(row.moved),
                         fixed(row.farthest), std::to_string(row.fresh), fixed(row.milliseconds)});
    }
    print_table(out, lines, 2);
}

} // namespace nurvex
