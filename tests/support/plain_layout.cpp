#include "tests/support/plain_layout.h"

#include "nurvex7/model/folding.h"
#include "nurvex7/model/moving.h"
#include "nurvex7/model/queries.h"
#include "tests/support/plain_queries.h"

#include <algorithm>

namespace nurvex7::testing_support {

void PlainLayout::Table::set_length(int wanted) {
    for (int i = length; i < wanted; ++i) {
        write(i, Column());
    }
    length = wanted;
}

void PlainLayout::Table::zero() {
    for (int i = 0; i < length; ++i) {
        write(i, Column());
    }
}

PlainLayout::Column PlainLayout::Table::read(int level) const {
    const auto place = static_cast<std::size_t>(level);
    return place < memory.size() ? memory[place] : Column();
}

void PlainLayout::Table::write(int level, const Column& column) {
    const auto place = static_cast<std::size_t>(level);
    if (place >= memory.size()) {
        memory.resize(place + 1);
    }
    memory[place] = column;
}

PlainLayout::PlainLayout(double between_levels, double between_nodes, double between_edges,
                         double stub)
    : level_gap(between_levels), node_gap(between_nodes), edge_gap(between_edges),
      edge_margin(stub) {}

bool PlainLayout::take_leaf_size(Node owner) {
    if (owner.GetOwned().GetCount() > 0) {
        return false;
    }
    owner.SetSize(owner.GetHandler()->GetSize(owner));
    return true;
}

void PlainLayout::begin_run(const Node& owner) {
    nodes = items(owner.GetOwned());
    level_nodes.clear();
}

void PlainLayout::Make(Node owner) {
    if (IsRoot(owner)) {
        cluster_info.clear();
        cluster_levels.clear();
    }
    if (take_leaf_size(owner)) {
        return;
    }
    for (const Node& inner : items(owner.GetOwned())) {
        _make_layout(inner);
    }
    cur_info = &cluster_info[owner];
    *cur_info = Store();
    local_node.clear();
    local_edge.clear();
    old_info = Store();
    begin_run(owner);
    cur_levels = &cluster_levels[owner];
    *cur_levels = Table();
    determine_levels();
    place_nodes_on_levels();
    barycentric_adjust();
    calculate_initial_y_coords();
    force_adjust();
    calculate_x_coords();
    mark_old();
    owner.SetSize(result_size);
}

void PlainLayout::Update(Node owner) {
    if (take_leaf_size(owner)) {
        return;
    }
    for (const Node& inner : items(owner.GetOwned())) {
        _update_layout(inner);
    }
    cur_info = &cluster_info[owner];
    old_info = *cur_info;
    *cur_info = Store();
    local_node.clear();
    local_edge.clear();
    cur_levels = &cluster_levels[owner];
    begin_run(owner);
    const tamsel7::size<double> size = owner.GetHandler()->GetSize(owner);
    const tamsel7::point<double> pos = owner.GetPosition();
    for (const auto& entry : old_info.of_node) {
        Node node = entry.first;
        node.SetPosition(node.GetPosition().x - pos.x, node.GetPosition().y - pos.y - size.height);
    }
    restore_old_levels();
    make_y_shifts();
    determine_new_nodes_levels();
    place_nodes_on_levels();
    calculate_new_nodes_y_coords();
    calculate_x_coords();
    mark_old();
    owner.SetSize(result_size);
}

void PlainLayout::Resize(Node owner) {
    if (take_leaf_size(owner)) {
        return;
    }
    cur_info = &cluster_info[owner];
    old_info = *cur_info;
    *cur_info = Store();
    begin_run(owner);
    cur_levels = &cluster_levels[owner];
    cur_levels->length = 0;
    UnshiftPosition(owner);
    restore_old_levels();
    make_y_shifts();
    calculate_x_coords();
    mark_old();
    owner.SetSize(result_size);
    ShiftPosition(owner, 0, 0);
}

bool PlainLayout::UpdateEnds(Node owner) {
    const level_list owned = items(owner.GetOwned());
    for (const Node& inner : owned) {
        if (!UpdateEnds(inner)) {
            return false;
        }
    }
    old_info = cluster_info.count(owner) == 1 ? cluster_info[owner] : Store();
    for (auto& entry : old_info.of_node) {
        entry.second.is_old = entry.second.is_old && entry.second.level >= 0;
    }
    nodes = owned;
    for (const level_list& component : find_components()) {
        const bool all_new = std::all_of(component.begin(), component.end(),
                                         [&](const Node& node) { return is_new(node); });
        const bool held = std::all_of(component.begin(), component.end(), [&](const Node& node) {
            return old_info.of_node[node].is_old || !old_levels(parents_of(node)).empty() ||
                   !old_levels(children_of(node)).empty();
        });
        if (!all_new && !held) {
            return false;
        }
    }
    return true;
}

bool PlainLayout::skipped(const Node& node) const {
    return !keep_hidden && hidden(node);
}

bool PlainLayout::is_new(const Node& node) {
    return !was_shown(node);
}

// An edge of an end that had no level when it was marked has never had a route.
bool PlainLayout::is_old_edge(const Node& node, const NodeEdgePair& pair) {
    return old_info.edge_is_old[pair.edge] && old_info.of_node[node].level >= 0 &&
           old_info.of_node[pair.node].level >= 0;
}

bool PlainLayout::was_shown(const Node& node) {
    const NodeRecord& old = old_info.of_node[node];
    return old.is_old && !old.was_hidden;
}

void PlainLayout::mark_old() {
    for (const Node& node : nodes) {
        if (skipped(node)) {
            continue;
        }
        cur_info->of_node[node].was_hidden = hidden(node);
        cur_info->of_node[node].is_old = true;
        for (const NodeEdgePair& pair : children_of(node)) {
            if (hidden(pair.node) || hidden(node)) {
                continue;
            }
            cur_info->edge_is_old[pair.edge] = true;
            for (const Node& bend : items(pair.edge.GetBreakNodesIn(pair.node.GetOwner()))) {
                cur_info->of_node[bend].is_old = true;
                cur_info->of_node[bend].was_hidden = false;
            }
        }
    }
}

void PlainLayout::mark_as_neighbours(const Node& a, const Node& b, const Edge& edge) {
    local_node[a].out_neighbours.push_back(NodeEdgePair{b, edge});
    local_node[b].in_neighbours.push_back(NodeEdgePair{a, edge});
}

void PlainLayout::lengthen_levels(int count) {
    if (level_count() < count) {
        level_nodes.resize(static_cast<std::size_t>(count));
    }
}

void PlainLayout::restore_old_levels() {
    for (const Node& node : nodes) {
        NodeRecord& old = old_info.of_node[node];
        if (skipped(node) || !old.is_old) {
            continue;
        }
        if (old.level < 0) {
            old.is_old = false;
            continue;
        }
        lengthen_levels(old.level + 1);
        cur_info->of_node[node] = old;
        if (!hidden(node) && !old.was_hidden) {
            at(old.level).push_back(node);
            restore_old_dummy(node);
        }
    }
    for (level_list& level : level_nodes) {
        std::stable_sort(level.begin(), level.end(), lower_y);
    }
    if (!level_nodes.empty() && holds_real_node(level_nodes.back())) {
        level_nodes.emplace_back();
        cur_levels->set_length(level_count() + 1);
    }
}

void PlainLayout::restore_old_dummy(const Node& node) {
    const int level = old_info.of_node[node].level;
    for (const NodeEdgePair& pair : children_of(node)) {
        const int child_level = old_info.of_node[pair.node].level;
        if (hidden(pair.node) || !is_old_edge(node, pair) || child_level == level) {
            continue;
        }
        const level_list bends = items(pair.edge.GetBreakNodesIn(node.GetOwner()));
        const std::size_t margin = child_level < level ? 4 : 2;
        Node const* prev = &node;
        for (std::size_t i = margin; i + margin < bends.size(); i += 2) {
            const NodeRecord old = old_info.of_node[bends[i]];
            if (old.level < 0) {
                continue;
            }
            lengthen_levels(old.level + 1);
            at(old.level).push_back(bends[i]);
            cur_info->of_node[bends[i]] = old;
            cur_info->of_node[bends[i + 1]] = old;
            if (child_level < level) {
                mark_as_neighbours(bends[i], *prev, pair.edge);
            } else {
                mark_as_neighbours(*prev, bends[i], pair.edge);
            }
            prev = &bends[i];
        }
    }
}

} // namespace nurvex7::testing_support
