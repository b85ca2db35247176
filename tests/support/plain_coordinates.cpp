// The y values: stacking, forces, free spaces; then columns and routes.
#include "tests/support/plain_layout.h"
#include "tests/support/plain_queries.h"

#include <algorithm>
#include <cfloat>

namespace nurvex7::testing_support {

double PlainLayout::gap_of(Node node) const {
    return node.IsDummy() ? edge_gap : node_gap;
}

double PlainLayout::get_height(const Node& node) {
    if (node.IsDummy()) {
        const Edge edge = node.GetEdgesOut().GetItem(0);
        return edge.GetHandler()->GetWidth(edge);
    }
    const double h = node.GetSize().height;
    const int c = local_node[node].wrap_count;
    if (c < 1) {
        return h;
    }
    pair_list set = parents_of(node);
    if (set.empty()) {
        set = children_of(node);
    }
    if (set.empty()) {
        return h;
    }
    const Edge edge = set.front().edge;
    return h + c * (edge_gap + edge.GetHandler()->GetWidth(edge));
}

void PlainLayout::calculate_initial_y_coords() {
    for (int k = 1; k <= level_count() - 2; ++k) {
        double y = 0;
        for (Node& node : at(k)) {
            const double g = gap_of(node);
            y += g / 2;
            node.SetPosition(0, y);
            y += get_height(node) + g / 2;
        }
    }
}

void PlainLayout::make_y_shifts() {
    if (level_count() < 3) {
        return;
    }
    const double min_gap = std::min(node_gap, edge_gap) / 2;
    std::map<double, double> shifts;
    for (int k = 1; k <= level_count() - 2; ++k) {
        for (std::size_t i = 1; i < at(k).size(); ++i) {
            const Node& a = at(k)[i - 1];
            const double y = at(k)[i].GetPosition().y;
            const double need = a.GetPosition().y + get_height(a) + min_gap;
            if (y < need) {
                const auto entry = shifts.emplace(y, need - y).first;
                entry->second = std::max(entry->second, need - y);
            }
        }
    }
    double sum = 0;
    for (auto& entry : shifts) {
        entry.second += sum;
        sum = entry.second;
    }
    for (int k = 1; k <= level_count() - 2; ++k) {
        for (Node& node : at(k)) {
            const double centre = node.GetPosition().y + get_height(node) / 2;
            double shift = 0;
            for (const auto& [key, value] : shifts) {
                if (key > centre) {
                    break;
                }
                shift = value;
            }
            if (shift != 0) {
                node.SetPosition(node.GetPosition().x, node.GetPosition().y + shift);
            }
        }
    }
}

void PlainLayout::force_adjust() {
    const int levels = level_count();
    if (levels < 3) {
        return;
    }
    for (int k = 2; k <= levels - 2; ++k) {
        force_adjust_block(at(k), DEPEND_ON_IN, false, -DBL_MAX, DBL_MAX);
    }
    if (use_force_adjust) {
        for (int k = levels - 3; k >= 1; --k) {
            force_adjust_block(at(k), DEPEND_ON_OUT, false, -DBL_MAX, DBL_MAX);
        }
    }
    for (int k = levels - 3; k >= 1; --k) {
        double lower = -DBL_MAX;
        for (std::size_t i = 0; i < at(k).size();) {
            const Node& node = at(k)[i];
            if (!node.IsDummy()) {
                lower = node.GetPosition().y + get_height(node) + node_gap / 2;
                ++i;
                continue;
            }
            level_list run;
            while (i < at(k).size() && at(k)[i].IsDummy()) {
                run.push_back(at(k)[i++]);
            }
            const double upper =
                i < at(k).size() ? at(k)[i].GetPosition().y - node_gap / 2 : DBL_MAX;
            force_adjust_block(run, DEPEND_ON_OUT, true, lower, upper);
        }
    }
}

PlainLayout::pair_list PlainLayout::pulling(const Node& node, DependenceLevel dependence) {
    pair_list chosen;
    if (dependence != DEPEND_ON_OUT) {
        chosen = local_node[node].in_neighbours;
    }
    if (dependence != DEPEND_ON_IN) {
        for (const NodeEdgePair& pair : local_node[node].out_neighbours) {
            if (dependence == DEPEND_ON_OUT || was_shown(pair.node)) {
                chosen.push_back(pair);
            }
        }
    }
    return chosen;
}

tamsel7::point<double> PlainLayout::exit_point(const NodeEdgePair& pair) {
    const Node& n = pair.node;
    tamsel7::point<double> p = n.GetPosition();
    if (n.IsDummy()) {
        return p;
    }
    p.x += n.GetSize().width;
    const level_list inner = items(pair.edge.GetBreakNodesIn(n));
    p.y += inner.empty() ? n.GetSize().height / 2 : inner.back().GetPosition().y;
    return p;
}

void PlainLayout::force_adjust_block(const level_list& run, DependenceLevel dependence,
                                     bool with_dummies, double lower, double upper) {
    std::map<Node, double> force;
    std::map<Node, bool> free;
    for (const Node& n : run) {
        if (!with_dummies && n.IsDummy()) {
            continue;
        }
        double c = n.GetPosition().y;
        if (!n.IsDummy()) {
            c += n.GetSize().height / 2;
        }
        double sum = 0;
        int count = 0;
        for (const NodeEdgePair& pair : pulling(n, dependence)) {
            if (pair.node.IsDummy() && !n.IsDummy()) {
                continue;
            }
            ++count;
            sum += exit_point(pair).y - c;
        }
        force[n] = count >= 1 ? sum / count : 0;
        free[n] = count < 1;
    }

    std::size_t start = 0;
    double sum = 0;
    int count = 0;
    double prev = DBL_MAX;
    for (std::size_t i = 0; i <= run.size(); ++i) {
        const bool at_end = i == run.size();
        if (!at_end && ((!with_dummies && run[i].IsDummy()) || free[run[i]])) {
            continue;
        }
        if (at_end || force[run[i]] > prev) {
            if (count == 0) {
                break;
            }
            double shift = sum / count;
            std::size_t first = start;
            if (lower > run[start].GetPosition().y + shift) {
                shift = lower - run[start].GetPosition().y;
                if (run[start].GetPosition().y + shift < lower) {
                    first = 0;
                }
            }
            for (std::size_t j = first; j < i; ++j) {
                Node moved = run[j];
                moved.SetPosition(moved.GetPosition().x, moved.GetPosition().y + shift);
            }
            if (at_end) {
                break;
            }
            lower = run[i].GetPosition().y + shift;
            start = i;
            sum = 0;
            count = 0;
        }
        prev = force[run[i]];
        sum += force[run[i]];
        ++count;
    }

    double u = upper;
    for (std::size_t i = run.size(); i > 0; --i) {
        Node node = run[i - 1];
        const double gap = gap_of(node);
        const double bottom = node.GetPosition().y + get_height(node) + gap / 2;
        if (bottom <= u) {
            break;
        }
        node.SetPosition(node.GetPosition().x, node.GetPosition().y - (bottom - u));
        u = node.GetPosition().y - gap / 2;
    }
}

void PlainLayout::calculate_new_nodes_y_coords() {
    for (level_list& level : level_nodes) {
        if (!level.empty()) {
            place_new_nodes_of(level);
        }
    }
}

void PlainLayout::place_new_nodes_of(level_list& level) {
    int first_new = 0;
    std::vector<FreeSpace> spaces = find_spaces(level, first_new);
    std::map<int, level_list> plan;
    for (std::size_t i = static_cast<std::size_t>(first_new); i < level.size(); ++i) {
        Node node = level[i];
        const double ideal = ideal_y(node);
        node.SetPosition(0, ideal);
        const double need = get_height(node) + gap_of(node);
        plan[choose_space(spaces, ideal, need)].push_back(node);
    }
    for (int s = 0; s < static_cast<int>(spaces.size()); ++s) {
        if (!plan[s].empty()) {
            pack(plan[s], spaces, s);
        }
    }
}

std::vector<PlainLayout::FreeSpace> PlainLayout::find_spaces(const level_list& level,
                                                             int& first_new) {
    std::vector<FreeSpace> spaces;
    double y = -DBL_MAX / 2;
    for (first_new = 0; first_new < static_cast<int>(level.size()); ++first_new) {
        const Node& node = level[static_cast<std::size_t>(first_new)];
        if (is_new(node)) {
            spaces.push_back(FreeSpace{y, DBL_MAX / 2, DBL_MAX / 2 - y});
            return spaces;
        }
        const double g = gap_of(node);
        const double top = node.GetPosition().y - g / 2;
        if (y < top) {
            spaces.push_back(FreeSpace{y, top, top - y});
        }
        y = node.GetPosition().y + get_height(node) + g / 2;
    }
    return spaces;
}

double PlainLayout::ideal_y(const Node& node) {
    double sum = 0;
    int count = 0;
    for (const NodeEdgePair& pair : pulling(node, DEPEND_ON_BOTH)) {
        sum += pair.node.GetPosition().y + get_height(pair.node) / 2;
        ++count;
    }
    return count > 0 ? sum / count : 0;
}

int PlainLayout::choose_space(std::vector<FreeSpace>& spaces, double ideal, double need) {
    if (spaces.size() == 1 || ideal < spaces[0].end) {
        return 0;
    }
    std::size_t right = 1;
    while (!(ideal <= spaces[right].end)) {
        ++right;
    }
    std::size_t left = right - 1;
    while (true) {
        const double left_distance = ideal - spaces[left].end;
        const double right_distance = spaces[right].start - ideal;
        std::size_t& taken = left_distance < right_distance ? left : right;
        if (need < spaces[taken].size) {
            spaces[taken].size -= need;
            return static_cast<int>(taken);
        }
        if (&taken == &left) {
            --left;
        } else {
            ++right;
        }
    }
}

void PlainLayout::pack(level_list planned, std::vector<FreeSpace>& spaces, int place) {
    FreeSpace& space = spaces[static_cast<std::size_t>(place)];
    std::stable_sort(planned.begin(), planned.end(), lower_y);
    if (place == 0 && spaces.size() > 1) {
        double y = space.end;
        for (auto node = planned.rbegin(); node != planned.rend(); ++node) {
            const double g = gap_of(*node);
            y -= g / 2 + get_height(*node);
            node->SetPosition(0, y);
            y -= g / 2;
        }
    } else {
        double y = place == 0 ? 0 : space.start;
        for (Node& node : planned) {
            const double g = gap_of(node);
            y += g / 2;
            node.SetPosition(0, y);
            y += get_height(node) + g / 2;
        }
    }
    space.start += gap_of(planned.front()) / 2;
    force_adjust_block(planned, DEPEND_ON_BOTH, true, space.start, space.end);
}

PlainLayout::Column PlainLayout::make_column(int level, double x) {
    double x_end = x;
    for (const Node& node : at(level)) {
        if (!node.IsDummy()) {
            x_end = std::max(x_end, x + node.GetSize().width);
        }
    }
    if (x_end != x) {
        x_end += 2 * edge_margin;
    }
    const Column old = cur_levels->read(level);
    const bool wide_enough = old.width >= x_end - x;
    const bool not_left = old.x_start >= x;
    if (wide_enough && not_left) {
        x = old.x_start;
        x_end = old.x_end;
    } else if (wide_enough || not_left) {
        x_end = std::max(x_end, old.x_end);
    }
    return Column{x, x_end, x_end - x};
}

void PlainLayout::calculate_x_coords() {
    double m = node_gap;
    for (int k = 1; k <= level_count() - 2; ++k) {
        for (const Node& node : at(k)) {
            m = std::min(m, node.GetPosition().y);
        }
    }
    const double s = m - node_gap;
    double x = level_gap;
    double bottom = 0;
    double max_bottom = 0;
    const Node owner = nodes.front().GetOwner();
    for (int k = 1; k <= level_count() - 2; ++k) {
        const Column column = make_column(k, x);
        cur_levels->write(k, column);
        for (const Node& node : at(k)) {
            const double y = node.GetPosition().y - s;
            if (node.IsDummy()) {
                place_break_node(node, column, y, owner);
            } else {
                place_normal_node(node, column, y);
                bottom = lay_tracks(node, column, owner);
            }
        }
        x = column.x_end + (column.width == 0 ? 0 : level_gap);
        max_bottom = std::max(max_bottom, bottom + node_gap);
    }
    if (level_count() > 0) {
        adjust_ports(0, 0, true);
        adjust_ports(level_count() - 1, x, false);
    }
    result_size = {x, max_bottom};
}

double PlainLayout::lay_tracks(const Node& node, const Column& column, const Node& owner) {
    const auto put = [](const level_list& b, std::size_t i, double x, double y) {
        if (i < b.size()) {
            Node bend = b[i];
            bend.SetPosition(x, y);
        }
    };
    double bottom = node.GetPosition().y + node.GetSize().height;
    for (const NodeEdgePair& pair : children_of(node)) {
        if (!hidden(pair.node) && (local_edge[pair.edge].flat || local_edge[pair.edge].reversed)) {
            bottom += edge_gap;
            const level_list b = items(pair.edge.GetBreakNodesIn(owner));
            put(b, 2, node.GetPosition().x + node.GetSize().width + edge_margin, bottom);
            put(b, 3, column.x_start, bottom);
            bottom += pair.edge.GetHandler()->GetWidth(pair.edge);
        }
    }
    for (const NodeEdgePair& pair : parents_of(node)) {
        if (!hidden(pair.node) && local_edge[pair.edge].reversed) {
            bottom += edge_gap;
            const level_list b = items(pair.edge.GetBreakNodesIn(owner));
            put(b, b.size() - 4, column.x_end, bottom);
            put(b, b.size() - 3, node.GetPosition().x - edge_margin, bottom);
            bottom += pair.edge.GetHandler()->GetWidth(pair.edge);
        }
    }
    return bottom;
}

void PlainLayout::place_normal_node(Node node, const Column& column, double y) {
    const double w = node.GetSize().width;
    const double c = y + node.GetSize().height / 2;
    node.SetPosition((column.x_start + column.x_end - w) / 2, y);
    const double x = node.GetPosition().x;
    const Node owner = node.GetOwner();
    for (const NodeEdgePair& pair : children_of(node)) {
        if (!hidden(pair.node)) {
            const level_list b = items(pair.edge.GetBreakNodesIn(owner));
            const bool turns = local_edge[pair.edge].flat || local_edge[pair.edge].reversed;
            adjust_break_to_inner(b, 0, node, x + w, c, false);
            adjust_break_to_inner(b, 1, node, turns ? x + w + edge_margin : column.x_end, c, false);
        }
    }
    for (const NodeEdgePair& pair : parents_of(node)) {
        if (!hidden(pair.node)) {
            const level_list b = items(pair.edge.GetBreakNodesIn(owner));
            const int n = static_cast<int>(b.size());
            const bool turns = local_edge[pair.edge].reversed;
            adjust_break_to_inner(b, n - 2, node, turns ? x - edge_margin : column.x_start, c,
                                  true);
            adjust_break_to_inner(b, n - 1, node, x, c, true);
        }
    }
    for (const NodeEdgePair& pair : items(GetEdgesInEx(node))) {
        const level_list b = items(pair.edge.GetBreakNodesIn(owner));
        const int n = static_cast<int>(b.size());
        adjust_break_to_inner(b, n - 2, node, column.x_start, c, true);
        adjust_break_to_inner(b, n - 1, node, x, c, true);
    }
    for (const NodeEdgePair& pair : items(GetEdgesOutEx(node))) {
        const level_list b = items(pair.edge.GetBreakNodesIn(owner));
        adjust_break_to_inner(b, 1, node, column.x_end, c, false);
        adjust_break_to_inner(b, 0, node, x + w, c, false);
    }
}

void PlainLayout::adjust_break_to_inner(const std::vector<Node>& list, int index, const Node& node,
                                        double x, double y, bool incoming) {
    if (index >= 0 && index < static_cast<int>(list.size())) {
        adjust_to_inner(list[static_cast<std::size_t>(index)], node, x, y, incoming);
    }
}

void PlainLayout::adjust_to_inner(Node break_node, const Node& node, double x, double y,
                                  bool incoming) {
    const Edge edge = break_node.GetEdgesOut().GetItem(0);
    const level_list inner = items(edge.GetBreakNodesIn(node));
    if (inner.empty()) {
        break_node.SetPosition(x, y);
    } else {
        const Node& end = incoming ? inner.front() : inner.back();
        break_node.SetPosition(x, end.GetPosition().y + node.GetPosition().y);
    }
}

void PlainLayout::place_break_node(Node node, const Column& column, double y, const Node& owner) {
    const Edge edge = node.GetEdgesOut().GetItem(0);
    const level_list b = items(edge.GetBreakNodesIn(owner));
    const int level = cur_info->of_node[node].level;
    for (std::size_t i = 0; i < b.size(); ++i) {
        if (b[i] != node && cur_info->of_node[b[i]].level == level) {
            Node partner = b[i];
            const bool partner_first =
                local_edge[edge].reversed || (i + 1 < b.size() && b[i + 1] == node);
            partner.SetPosition(partner_first ? column.x_start : column.x_end, y);
            node.SetPosition(partner_first ? column.x_end : column.x_start, y);
            return;
        }
    }
    node.SetPosition(column.x_start, y);
}

void PlainLayout::adjust_ports(int level, double x, bool incoming) {
    for (Node& port : at(level)) {
        const pair_list& next =
            incoming ? local_node[port].out_neighbours : local_node[port].in_neighbours;
        if (next.empty()) {
            continue;
        }
        const Node q = next.front().node;
        const double y = q.GetPosition().y;
        if (q.IsDummy()) {
            port.SetPosition(x, y);
        } else {
            adjust_to_inner(port, q, x, y + q.GetSize().height / 2, incoming);
        }
    }
}

} // namespace nurvex7::testing_support
