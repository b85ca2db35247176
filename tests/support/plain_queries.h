#pragma once

#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"

#include <algorithm>
#include <vector>

namespace nurvex7::testing_support {

/// The items of a set as a plain vector.
inline std::vector<Node> items(NodeSet set) {
    std::vector<Node> result;
    for (int i = 0; i < set.GetCount(); ++i) {
        result.push_back(set.GetItem(i));
    }
    return result;
}

inline std::vector<Edge> items(EdgeSet set) {
    std::vector<Edge> result;
    for (int i = 0; i < set.GetCount(); ++i) {
        result.push_back(set.GetItem(i));
    }
    return result;
}

inline std::vector<NodeEdgePair> items(const graph_ptr2<IGraphSet<NodeEdgePair>>& set) {
    std::vector<NodeEdgePair> result;
    for (int i = 0; i < set->GetCount(); ++i) {
        result.push_back(set->GetItem(i));
    }
    return result;
}

inline std::vector<NodeEdgePair> children_of(const Node& node) {
    return items(GetChildrenEx(node));
}

inline std::vector<NodeEdgePair> parents_of(const Node& node) {
    return items(GetParentsEx(node));
}

inline bool hidden(const Node& node) {
    return IsFlagSet(node, NODE_HIDDEN);
}

inline bool lower_y(const Node& a, const Node& b) {
    return a.GetPosition().y < b.GetPosition().y;
}

inline bool holds_real_node(const std::vector<Node>& level) {
    return std::any_of(level.begin(), level.end(),
                       [](const Node& node) { return !node.IsDummy(); });
}

} // namespace nurvex7::testing_support
