#include "bench/limit/cycle_order.h"

#include <cstddef>
#include <set>
#include <utility>

namespace limit {

namespace {

using component_t = std::vector<index_t>;

constexpr int UNNUMBERED = -1;

/// One walk; the stack is its own, as a path can be as long as the graph is large.
class ComponentWalk {
public:
    ComponentWalk(const Adjacency& in_, const Adjacency& out_, index_t count)
        : in(in_), out(out_), seen(count, 0) {}

    bool has_seen(index_t node) const { return seen[node] != 0; }

    component_t Collect(index_t start) {
        component_t component;
        enter(start, component);
        while (!open.empty()) {
            Step& step = open.back();
            const auto children = out.of(step.node);
            const auto parents = in.of(step.node);
            const std::size_t at = step.next++;
            if (at == children.size() + parents.size()) {
                open.pop_back();
                continue;
            }
            const index_t neighbour =
                at < children.size() ? children[at].node : parents[at - children.size()].node;
            if (!has_seen(neighbour)) {
                enter(neighbour, component);
            }
        }
        return component;
    }

private:
    struct Step {
        index_t node;
        std::size_t next; ///< among the children, and then the parents
    };

    void enter(index_t node, component_t& component) {
        seen[node] = 1;
        component.push_back(node);
        open.push_back({node, 0});
    }

    const Adjacency& in;
    const Adjacency& out;
    std::vector<char> seen;
    std::vector<Step> open;
};

/// Numbers one component after the other; the arrays serve them all.
class Numbering {
public:
    Numbering(const Adjacency& in_, const Adjacency& out_, index_t count)
        : order(count, UNNUMBERED), in(in_), out(out_), turn(count), open_in(count),
          open_out(count), finished(count, 0) {}

    void number_all(const component_t& component) {
        front = 0;
        back = static_cast<int>(component.size()) - 1;
        remaining = component.size();
        for (index_t i = 0; i < count_of(component); ++i) {
            turn[component[i]] = i;
            count_neighbours(component[i]);
        }
        number_ends(component);
        if (remaining > 0) {
            number_rest(component);
        }
    }

    std::vector<int> order;

private:
    using surplus_t = std::pair<int, index_t>; ///< of entering over leaving, and the turn

    void count_neighbours(index_t node) {
        open_in[node] = 0;
        open_out[node] = 0;
        in.for_each_distinct(node, [&](index_t) { ++open_in[node]; });
        out.for_each_distinct(node, [&](index_t) { ++open_out[node]; });
    }

    /// All sources share the number 0: they cannot be joined to each other.
    void number_ends(const component_t& component) {
        bool any_source = false;
        for (const index_t node : component) {
            if (in.of(node).empty()) {
                order[node] = 0;
                any_source = true;
            } else if (out.of(node).empty()) {
                order[node] = back--;
            } else {
                continue;
            }
            finish(node, [](index_t) {});
            --remaining;
        }
        front = any_source ? 1 : 0;
    }

    /// Goes through the component over and over. A node that becomes an end behind the turn of the
    /// walk is met in the same round, one before it in the next; a round that meets none cuts a
    /// cycle.
    void number_rest(const component_t& component) {
        ready.clear();
        surplus.clear();
        for (const index_t node : component) {
            if (order[node] == UNNUMBERED) {
                enter(node);
            }
        }
        while (remaining > 0) {
            if (ready.empty()) {
                take(component[surplus.begin()->second], front++);
            }
            for (auto next = ready.begin(); next != ready.end();) {
                const index_t at = *next;
                const index_t node = component[at];
                take(node, open_in[node] == 0 ? front++ : back--);
                next = ready.upper_bound(at);
            }
        }
    }

    void take(index_t node, int number) {
        order[node] = number;
        surplus.erase(surplus_of(node));
        ready.erase(turn[node]);
        touched.clear();
        finish(node, [this](index_t neighbour) {
            surplus.erase(surplus_of(neighbour));
            touched.push_back(neighbour);
        });
        for (const index_t neighbour : touched) {
            enter(neighbour);
        }
        --remaining;
    }

    void enter(index_t node) {
        surplus.insert(surplus_of(node));
        if (open_in[node] == 0 || open_out[node] == 0) {
            ready.insert(turn[node]);
        }
    }

    surplus_t surplus_of(index_t node) const {
        return {open_in[node] - open_out[node], turn[node]};
    }

    /// The edges of a node count no longer. Tells each neighbour before its count falls.
    template <typename F>
    void finish(index_t node, F before) {
        finished[node] = 1;
        const auto lower = [&](std::vector<int>& counts) {
            return [this, &counts, &before](index_t neighbour) {
                if (finished[neighbour] == 0) {
                    before(neighbour);
                    --counts[neighbour];
                }
            };
        };
        out.for_each_distinct(node, lower(open_in));
        in.for_each_distinct(node, lower(open_out));
    }

    const Adjacency& in;
    const Adjacency& out;
    std::vector<index_t> turn; ///< in the component, by node
    std::vector<int> open_in;  ///< neighbours that are not finished
    std::vector<int> open_out;
    std::vector<char> finished;
    int front = 0;
    int back = 0;
    std::size_t remaining = 0;
    std::set<index_t> ready; ///< turns of the nodes that have become ends
    std::set<surplus_t> surplus;
    std::vector<index_t> touched;
};

} // namespace

std::vector<component_t> FindComponents(const Adjacency& in, const Adjacency& out, index_t count) {
    std::vector<component_t> components;
    ComponentWalk walk(in, out, count);
    for (index_t node = 0; node < count; ++node) {
        if (!walk.has_seen(node)) {
            components.push_back(walk.Collect(node));
        }
    }
    return components;
}

std::vector<int> NumberAgainstCycles(const Adjacency& in, const Adjacency& out, index_t count) {
    Numbering numbering(in, out, count);
    for (const component_t& component : FindComponents(in, out, count)) {
        numbering.number_all(component);
    }
    return std::move(numbering.order);
}

} // namespace limit
