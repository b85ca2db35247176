#include "tests/support/drawing.h"

#include "tests/support/plain_queries.h"
#include "tests/support/recording_painter.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <sstream>

namespace nurvex7::testing_support {

namespace {

std::string at(const Node& node) {
    return tests::text_of(node.GetPosition().x) + "," + tests::text_of(node.GetPosition().y);
}

/// The owners that an edge may pass through: both ends with all that is above them.
std::vector<Node> owners_along(const Edge& edge) {
    std::vector<Node> owners;
    for (Node step : {edge.From(), edge.To()}) {
        for (;; step = step.GetOwner()) {
            if (std::find(owners.begin(), owners.end(), step) == owners.end()) {
                owners.push_back(step);
            }
            if (IsRoot(step)) {
                break;
            }
        }
    }
    return owners;
}

void add_point(std::vector<Fact>& facts, const std::string& what, const Node& node) {
    facts.push_back({what + " x", node.GetPosition().x});
    facts.push_back({what + " y", node.GetPosition().y});
}

void add_edge_facts(std::vector<Fact>& facts, const Edge& edge) {
    for (const Node& owner : owners_along(edge)) {
        const std::vector<Node> bends = items(edge.GetBreakNodesIn(owner));
        const std::string place = edge.GetCaption() + " in '" + owner.GetCaption() + "'";
        facts.push_back({place + " count", static_cast<double>(bends.size())});
        for (std::size_t i = 0; i < bends.size(); ++i) {
            add_point(facts, place + " bend " + std::to_string(i), bends[i]);
        }
    }
}

} // namespace

std::string drawing_text(const TestGraph& g) {
    std::ostringstream out;
    for (const Node& node : g.nodes()) {
        if (hidden(node)) {
            continue;
        }
        out << node.GetCaption() << ' ' << tests::text_of(node.GetSize().width) << 'x'
            << tests::text_of(node.GetSize().height) << " at " << at(node) << '\n';
    }
    for (const Edge& edge : g.edges()) {
        if (hidden(edge.From()) || hidden(edge.To())) {
            continue;
        }
        out << edge.GetCaption();
        for (const Node& bend : items(edge.GetBreakNodes())) {
            out << ' ' << at(bend);
        }
        out << '\n';
    }
    return out.str();
}

std::vector<Fact> drawing_facts(const TestGraph& g) {
    std::vector<Node> nodes = g.nodes();
    nodes.push_back(g.root());
    std::vector<Fact> facts;
    for (const Node& node : nodes) {
        const std::string name = "'" + node.GetCaption() + "'";
        add_point(facts, name, node);
        facts.push_back({name + " width", node.GetSize().width});
        facts.push_back({name + " height", node.GetSize().height});
    }
    for (const Edge& edge : g.edges()) {
        add_edge_facts(facts, edge);
    }
    return facts;
}

std::string first_difference(const std::vector<Fact>& a, const std::vector<Fact>& b) {
    const std::size_t count = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < count; ++i) {
        if (a[i].what != b[i].what ||
            std::bit_cast<std::uint64_t>(a[i].value) != std::bit_cast<std::uint64_t>(b[i].value)) {
            std::ostringstream out;
            out.precision(17);
            out << a[i].what << ": " << a[i].value << " against " << b[i].what << ": "
                << b[i].value;
            return out.str();
        }
    }
    return a.size() == b.size() ? "" : "different numbers of facts";
}

std::string first_difference(const TestGraph& a, const TestGraph& b) {
    return first_difference(drawing_facts(a), drawing_facts(b));
}

} // namespace nurvex7::testing_support
