// Levels, dummy nodes and the order along the levels.
#include "tests/support/plain_layout.h"
#include "tests/support/plain_queries.h"

#include <algorithm>
#include <deque>
#include <limits>

namespace nurvex7::testing_support {

void PlainLayout::determine_levels() {
    for (const level_list& component : find_components()) {
        enumerate_component(component);
    }
    mark_reversed_edges(nodes, true);
    mark_levels(nodes);
    mark_reversed_edges(nodes, false);
}

void PlainLayout::determine_new_nodes_levels() {
    for (const level_list& component : find_components()) {
        const bool all_new = std::all_of(component.begin(), component.end(),
                                         [&](const Node& node) { return is_new(node); });
        if (all_new) {
            enumerate_component(component);
            mark_reversed_edges(component, true);
            mark_levels(component);
        } else {
            mark_new_nodes_levels(component);
        }
    }
    mark_reversed_edges(nodes, false);
}

std::vector<PlainLayout::level_list> PlainLayout::find_components() {
    for (const Node& node : nodes) {
        local_node[node].visited = false;
    }
    std::vector<level_list> components;
    for (const Node& node : nodes) {
        if (!skipped(node) && !local_node[node].visited) {
            components.emplace_back();
            collect_component(node, components.back());
        }
    }
    return components;
}

void PlainLayout::collect_component(const Node& start, level_list& component) {
    local_node[start].visited = true;
    component.push_back(start);
    for (const pair_list& neighbours : {children_of(start), parents_of(start)}) {
        for (const NodeEdgePair& pair : neighbours) {
            if (!skipped(pair.node) && !local_node[pair.node].visited) {
                collect_component(pair.node, component);
            }
        }
    }
}

void PlainLayout::enumerate_component(const level_list& component) {
    int front = 0;
    int back = static_cast<int>(component.size()) - 1;
    int remaining = static_cast<int>(component.size());
    for (const Node& node : component) {
        if (degree(parents_of(node)) == 0) {
            settle(node, 0);
            front = 1;
            --remaining;
        } else if (degree(children_of(node)) == 0) {
            settle(node, back--);
            --remaining;
        } else {
            local_node[node].order = -1;
        }
    }
    while (remaining != 0) {
        sweep_component(component, front, back, remaining);
    }
}

bool PlainLayout::sweep_component(const level_list& component, int& front, int& back,
                                  int& remaining) {
    int best = std::numeric_limits<int>::min();
    const Node* candidate = &component.at(0);
    bool progress = false;
    for (const Node& node : component) {
        if (local_node[node].order != -1) {
            continue;
        }
        const int in = degree_ex(node, &LocalEdge::marked, true, false);
        const int out = degree_ex(node, &LocalEdge::marked, false, false);
        if (in == 0 || out == 0) {
            settle(node, in == 0 ? front++ : back--);
            progress = true;
            --remaining;
        } else if (best < out - in) {
            best = out - in;
            candidate = &node;
        }
    }
    if (!progress) {
        settle(*candidate, front++);
        --remaining;
    }
    return progress;
}

void PlainLayout::settle(const Node& node, int order) {
    local_node[node].order = order;
    for (const pair_list& neighbours : {parents_of(node), children_of(node)}) {
        for (const NodeEdgePair& pair : neighbours) {
            local_edge[pair.edge].marked = true;
        }
    }
}

int PlainLayout::degree(const pair_list& pairs) {
    int count = 0;
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        const bool starts_run = i == 0 || pairs[i].node != pairs[i - 1].node;
        if (starts_run && !skipped(pairs[i].node)) {
            ++count;
        }
    }
    return count;
}

int PlainLayout::degree_ex(const Node& node, bool LocalEdge::*member, bool incoming, bool both) {
    const pair_list one = incoming ? parents_of(node) : children_of(node);
    const pair_list other = incoming ? children_of(node) : parents_of(node);
    int count = count_runs(node, one, member, false);
    if (both) {
        count += count_runs(node, other, member, true);
    }
    return count;
}

int PlainLayout::count_runs(const Node& node, const pair_list& pairs, bool LocalEdge::*member,
                            bool wanted) {
    int count = 0;
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        const bool starts_run = i == 0 || pairs[i].node != pairs[i - 1].node;
        if (starts_run && local_edge[pairs[i].edge].*member == wanted && pairs[i].node != node &&
            !skipped(pairs[i].node)) {
            ++count;
        }
    }
    return count;
}

void PlainLayout::mark_reversed_edges(const level_list& list, bool by_order) {
    for (const Node& node : list) {
        if (skipped(node)) {
            continue;
        }
        for (const NodeEdgePair& pair : children_of(node)) {
            if (skipped(pair.node)) {
                continue;
            }
            const int d = by_order
                              ? local_node[node].order - local_node[pair.node].order
                              : cur_info->of_node[node].level - cur_info->of_node[pair.node].level;
            local_edge[pair.edge].reversed = d > 0;
            local_edge[pair.edge].flat = d == 0;
        }
    }
}

void PlainLayout::mark_levels(const level_list& list) {
    level_list starts;
    std::map<Node, int> walked;
    for (const Node& node : list) {
        if (degree_ex(node, &LocalEdge::reversed, true, true) == 0) {
            cur_info->of_node[node].level = 1;
            set_node_level(node, 1, walked);
            starts.push_back(node);
        }
    }
    if (starts.size() > 1) {
        tighten_start_nodes(starts);
    }
}

// A node that has been walked at this very level has handed it on to all that follow it, and levels
// only rise: walking it again could change nothing and would take exponential time.
void PlainLayout::set_node_level(const Node& node, int level, std::map<Node, int>& walked) {
    if (level < cur_info->of_node[node].level) {
        return;
    }
    const auto before = walked.find(node);
    if (before != walked.end() && before->second == level) {
        return;
    }
    walked[node] = level;
    cur_info->of_node[node].level = level;
    for (const NodeEdgePair& pair : children_of(node)) {
        if (!skipped(pair.node) && !local_edge[pair.edge].reversed && pair.node != node) {
            set_node_level(pair.node, level + 1, walked);
        }
    }
    for (const NodeEdgePair& pair : parents_of(node)) {
        if (!skipped(pair.node) && local_edge[pair.edge].reversed && pair.node != node) {
            set_node_level(pair.node, level + 1, walked);
        }
    }
}

void PlainLayout::tighten_start_nodes(const level_list& starts) {
    for (const Node& start : starts) {
        int lowest = std::numeric_limits<int>::max();
        bool found = false;
        for (const bool incoming : {false, true}) {
            for (const NodeEdgePair& pair : incoming ? parents_of(start) : children_of(start)) {
                if (skipped(pair.node) || pair.node == start ||
                    local_edge[pair.edge].reversed != incoming) {
                    continue;
                }
                found = true;
                lowest = std::min(lowest, cur_info->of_node[pair.node].level);
            }
        }
        if (found && lowest > 2) {
            cur_info->of_node[start].level = lowest - 1;
        }
    }
}

std::vector<int> PlainLayout::old_levels(const pair_list& pairs) {
    std::vector<int> levels;
    for (const NodeEdgePair& pair : pairs) {
        if (!skipped(pair.node) && was_shown(pair.node)) {
            levels.push_back(old_info.of_node[pair.node].level);
        }
    }
    std::sort(levels.begin(), levels.end());
    return levels;
}

void PlainLayout::mark_new_nodes_levels(const level_list& component) {
    std::deque<Node> queue;
    for (const Node& node : component) {
        if (!skipped(node) && !old_info.of_node[node].is_old) {
            queue.push_back(node);
        }
    }
    while (!queue.empty()) {
        const Node node = queue.front();
        queue.pop_front();
        const std::vector<int> parents = old_levels(parents_of(node));
        const std::vector<int> children = old_levels(children_of(node));
        if (parents.empty() && children.empty()) {
            queue.push_back(node);
        } else if (parents.empty()) {
            cur_info->of_node[node].level = children.front() - 1;
        } else if (children.empty()) {
            cur_info->of_node[node].level = parents.back() + 1;
        } else {
            cur_info->of_node[node].level = level_between(parents, children);
        }
    }
}

int PlainLayout::level_between(const std::vector<int>& parents, const std::vector<int>& children) {
    const int lo = std::min(parents.front(), children.front());
    const int hi = std::max(parents.back(), children.back());
    std::map<int, int> penalty;
    for (int level = lo; level <= hi; ++level) {
        penalty[level] = 0;
    }
    for (const int child : children) {
        for (int level = child; level <= hi; ++level) {
            ++penalty[level];
        }
    }
    for (const int parent : parents) {
        for (int level = parent; level >= lo; --level) {
            ++penalty[level];
        }
    }
    int best = lo;
    for (const auto& [level, value] : penalty) {
        if (value < penalty[best]) {
            best = level;
        }
    }
    return best;
}

void PlainLayout::place_nodes_on_levels() {
    shift_old_levels();
    place_new_nodes();
    if (!level_nodes.empty() && holds_real_node(level_nodes.back())) {
        level_nodes.emplace_back();
        cur_levels->set_length(cur_levels->length + 1);
    }
}

void PlainLayout::shift_old_levels() {
    int lo = std::numeric_limits<int>::max();
    int hi = std::numeric_limits<int>::min();
    for (const Node& node : nodes) {
        if (!skipped(node)) {
            lo = std::min(lo, cur_info->of_node[node].level);
            hi = std::max(hi, cur_info->of_node[node].level);
        }
    }
    if (lo > hi) {
        return;
    }
    if (lo >= 1) {
        cur_levels->set_length(hi + 2);
        level_nodes.resize(static_cast<std::size_t>(hi + 2));
        return;
    }
    const int k = 1 - lo;
    cur_levels->set_length(cur_levels->length + k);
    cur_levels->zero();
    const int before = level_count();
    if (before > 0) {
        lengthen_levels(before + k);
        for (int level = before - 1; level >= 0; --level) {
            at(level + k) = level_list(at(level));
        }
    }
    for (auto& entry : cur_info->of_node) {
        entry.second.level += k;
    }
    if (cur_levels->length > hi - lo + 3) {
        cur_levels->set_length(hi - lo + 3);
    }
    for (const Node& node : nodes) {
        if (!hidden(node) && is_new(node)) {
            lengthen_levels(cur_info->of_node[node].level + 1);
        }
    }
}

void PlainLayout::place_new_nodes() {
    for (const Node& node : nodes) {
        if (hidden(node)) {
            continue;
        }
        if (is_new(node)) {
            at(cur_info->of_node[node].level).push_back(node);
            insert_dummy_nodes_inout(node, true);
            insert_dummy_nodes_inout(node, false);
        }
        for (const NodeEdgePair& pair : children_of(node)) {
            if (!hidden(pair.node) && !is_old_edge(node, pair)) {
                insert_dummy_nodes_between(node, pair.node, pair.edge);
            }
        }
    }
}

void PlainLayout::insert_dummy_nodes_inout(const Node& node, bool incoming) {
    const int own_level = cur_info->of_node[node].level;
    const int k = incoming ? own_level : level_count() - own_level - 1;
    const Node owner = node.GetOwner();
    for (const NodeEdgePair& pair : items(incoming ? GetEdgesInEx(node) : GetEdgesOutEx(node))) {
        Edge edge = pair.edge;
        edge.RemoveBreakNodesIn(owner);
        edge.AddBreakNodesIn(owner, 2 * k + 1);
        const level_list b = items(edge.GetBreakNodesIn(owner));
        if (k < 1) {
            continue;
        }
        std::size_t i = incoming ? 0 : 2;
        int level = incoming ? 0 : own_level + 1;
        cur_info->of_node[b[i]].level = level;
        at(level).push_back(b[i]);
        if (incoming) {
            mark_as_neighbours(b[b.size() - 3], node, edge);
        } else {
            mark_as_neighbours(node, b[2], edge);
        }
        for (int step = 1; step < k; ++step) {
            cur_info->of_node[b[i + 1]].level = incoming ? level + 1 : level;
            ++level;
            cur_info->of_node[b[i + 2]].level = level;
            at(level).push_back(b[i + 2]);
            mark_as_neighbours(b[i], b[i + 2], edge);
            i += 2;
        }
    }
}

void PlainLayout::insert_dummy_nodes_between(const Node& from, const Node& to, Edge edge) {
    const Node owner = from.GetOwner();
    const int d = cur_info->of_node[to].level - cur_info->of_node[from].level;
    edge.RemoveBreakNodesIn(owner);
    if (d == 0) {
        edge.AddBreakNodesIn(owner, 6);
        ++local_node[from].wrap_count;
        if (to != from) {
            ++local_node[to].wrap_count;
        }
        return;
    }
    if (d == 1) {
        mark_as_neighbours(from, to, edge);
        edge.AddBreakNodesIn(owner, 4);
        return;
    }
    if (d == -1) {
        mark_as_neighbours(to, from, edge);
        ++local_node[from].wrap_count;
        ++local_node[to].wrap_count;
        edge.AddBreakNodesIn(owner, 8);
        return;
    }
    int length = 2 * std::abs(d) + 2;
    int margin = 2;
    if (local_edge[edge].reversed) {
        length = 2 * std::abs(d) + 6;
        margin = 4;
        ++local_node[from].wrap_count;
        ++local_node[to].wrap_count;
    }
    edge.AddBreakNodesIn(owner, length);
    const level_list b = items(edge.GetBreakNodesIn(owner));
    const int sign = d > 0 ? 1 : -1;
    const Node* prev = &from;
    int level = cur_info->of_node[from].level + sign;
    for (int i = margin; i != length - margin; i += 2) {
        const Node& bend = b[static_cast<std::size_t>(i)];
        cur_info->of_node[bend].level = level;
        at(level).push_back(bend);
        if (sign == 1) {
            mark_as_neighbours(*prev, bend, edge);
        } else {
            mark_as_neighbours(bend, *prev, edge);
        }
        prev = &bend;
        cur_info->of_node[b[static_cast<std::size_t>(i + 1)]].level = level;
        level += sign;
    }
    if (sign == 1) {
        mark_as_neighbours(*prev, to, edge);
    } else {
        mark_as_neighbours(to, *prev, edge);
    }
}

void PlainLayout::barycentric_adjust() {
    const int levels = level_count();
    if (levels > 1) {
        enumerate_level(1);
    }
    if (levels < 4) {
        return;
    }
    for (int k = 2; k <= levels - 2; ++k) {
        sort_level(k, &LocalNode::in_neighbours);
    }
    for (int k = levels - 3; k >= 1; --k) {
        sort_level(k, &LocalNode::out_neighbours);
    }
    for (int k = 2; k <= levels - 2; ++k) {
        sort_level(k, &LocalNode::in_neighbours);
    }
}

void PlainLayout::sort_level(int level, std::vector<NodeEdgePair> LocalNode::*neighbours) {
    std::stable_sort(at(level).begin(), at(level).end(), [&](const Node& a, const Node& b) {
        return a != b && sort_key(a, neighbours) < sort_key(b, neighbours);
    });
    enumerate_level(level);
}

double PlainLayout::sort_key(const Node& node, std::vector<NodeEdgePair> LocalNode::*neighbours) {
    const pair_list& set = local_node[node].*neighbours;
    if (set.empty()) {
        return node.GetPosition().y;
    }
    double sum = 0;
    for (const NodeEdgePair& pair : set) {
        sum += pair.node.GetPosition().y;
    }
    return sum / static_cast<double>(set.size());
}

void PlainLayout::enumerate_level(int level) {
    for (std::size_t i = 0; i < at(level).size(); ++i) {
        at(level)[i].SetPosition(0.0, static_cast<double>(i));
    }
}

} // namespace nurvex7::testing_support
