#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"
#include "nurvex7/model/text_graph.h"
#include "tests/support/plain_queries.h"
#include "tests/support/random_calls.h"

#include <algorithm>
#include <climits>
#include <sstream>

// Calls that change or read what a graph consists of.

namespace nurvex7::testing_support {

std::vector<RandomCalls::Call> RandomCalls::structure_calls() {
    return {
        {"add_node", 90, &RandomCalls::add_node},
        {"link", 110, &RandomCalls::link},
        {"link_elsewhere", 4, &RandomCalls::link_elsewhere},
        {"remove_node", 40, &RandomCalls::remove_node},
        {"remove_edge", 30, &RandomCalls::remove_edge},
        {"remove_all", 1, &RandomCalls::remove_all},
        {"remove_while_walking", 1, &RandomCalls::remove_while_walking},
        {"set_owner", 25, &RandomCalls::set_owner},
        {"refused_on_break_node", 4, &RandomCalls::refused_on_break_node},
        {"name_things", 15, &RandomCalls::name_things},
        {"read_sets", 30, &RandomCalls::read_sets},
        {"hold_set", 15, &RandomCalls::hold_set},
        {"read_held_sets", 10, &RandomCalls::read_held_sets},
        {"read_removed", 15, &RandomCalls::read_removed},
        {"query_neighbours", 30, &RandomCalls::query_neighbours},
        {"query_edges", 20, &RandomCalls::query_edges},
        {"query_order", 20, &RandomCalls::query_order},
        {"walk", 10, &RandomCalls::walk},
        {"load", 2, &RandomCalls::load},
        {"set_storage", 1, &RandomCalls::set_storage},
        {"renew_graph", 1, &RandomCalls::renew_graph},
    };
}

void RandomCalls::add_node() {
    if (nodes.size() >= most_nodes) {
        remove_node();
        return;
    }
    Node owner = chance(60) ? root() : node_or_root();
    keep(owner.AddNode());
}

void RandomCalls::link() {
    Node from = node();
    Node to = chance(5) ? from : node();
    if (chance(50) && from.GetOwner() != to.GetOwner()) {
        const std::vector<Node> beside = items(from.GetOwner().GetOwned());
        to = beside[static_cast<std::size_t>(below(static_cast<int>(beside.size())))];
    } else if (chance(10) && !IsRoot(from.GetOwner())) {
        to = from.GetOwner();
    }
    if (GetRoot(from).get_impl().get() == GetRoot(to).get_impl().get() || chance(foreignness)) {
        edges.push_back(chance(50) ? from.LinkTo(to) : to.LinkTo(from));
    }
}

// To a break node, and from a break node or a root: nothing comes of it.
void RandomCalls::link_elsewhere() {
    Node top = root();
    top.LinkTo(node());
    if (std::optional<Node> b = bend()) {
        node().LinkTo(*b);
        b->LinkTo(node());
    }
}

void RandomCalls::remove_node() {
    node().Remove();
}

void RandomCalls::remove_edge() {
    if (std::optional<Edge> e = edge()) {
        e->Remove();
        edges.pop_back();
    }
}

void RandomCalls::remove_all() {
    root().Remove();
}

void RandomCalls::remove_while_walking() {
    const auto remove = [](Node n) { n.Remove(); };
    ForEachNodeIn(node_or_root(), remove, /*post_order=*/true, /*include_self=*/false);
}

void RandomCalls::set_owner() {
    Node moved = node();
    const Node owner = node_or_root();
    const bool at_home =
        GetRoot(moved).get_impl().get() == GetRoot(owner).get_impl().get() || chance(foreignness);
    if (moved != owner && at_home) {
        moved.SetOwner(owner);
    }
}

void RandomCalls::refused_on_break_node() {
    if (std::optional<Node> b = bend()) {
        b->AddNode();
        b->SetOwner(node_or_root());
        node().SetOwner(*b);
        b->Remove();
        Node top = root();
        top.SetOwner(node());
    }
}

void RandomCalls::name_things() {
    Node n = any_kind_of_node();
    n.SetCaption("n" + std::to_string(below(9)));
    n.SetTag(chance(50) ? INT_MIN : below(99));
    if (std::optional<Edge> e = edge()) {
        e->SetCaption(n.GetCaption());
        e->SetTag(n.GetTag());
        e->GetCaption();
    }
}

void RandomCalls::read_sets() {
    const Node n = any_kind_of_node();
    NodeSet owned = n.GetOwned();
    IGraphSet<Node>::Iterator at{0, &owned};
    for (; at != owned.End(); at++) {
        at->GetID();
    }
    for (const NodeSet& set : {n.GetParents(), n.GetChildren(), n.GetOwned()}) {
        items(set);
    }
    for (const EdgeSet& set : {n.GetEdgesIn(), n.GetEdgesOut()}) {
        for (const Edge& e : items(set)) {
            e.From();
            e.To();
        }
    }
}

void RandomCalls::hold_set() {
    const Node n = any_kind_of_node();
    node_sets.insert(node_sets.begin(), chance(50) ? n.GetOwned() : n.GetChildren());
    edge_sets.insert(edge_sets.begin(), chance(50) ? n.GetEdgesIn() : n.GetEdgesOut());
    if (std::optional<Edge> e = edge()) {
        node_sets.insert(node_sets.begin(), e->GetBreakNodes());
    }
    node_sets.resize(std::min<std::size_t>(node_sets.size(), 12), node_sets.back());
    edge_sets.resize(std::min<std::size_t>(edge_sets.size(), 12), edge_sets.back());
}

void RandomCalls::read_held_sets() {
    for (const NodeSet& set : node_sets) {
        for (const Node& n : items(set)) {
            n.GetCaption();
        }
    }
    for (const EdgeSet& set : edge_sets) {
        for (const Edge& e : items(set)) {
            e.From();
        }
    }
}

void RandomCalls::read_removed() {
    for (const Node& n : removed) {
        n.GetCaption();
        n.GetSize();
        n.GetLayout();
        n.GetHandler();
        items(n.GetOwned());
        items(n.GetEdgesIn());
        items(n.GetEdgesOut());
        items(n.GetParents());
        items(n.GetChildren());
    }
}

void RandomCalls::query_neighbours() {
    const Node n = any_kind_of_node();
    for (const auto& set : {GetChildrenEx(n), GetParentsEx(n), GetEdgesOutEx(n), GetEdgesInEx(n)}) {
        CalcDegreeEx(set);
        for (const NodeEdgePair& pair : items(set)) {
            pair.node.GetID();
        }
    }
    InDegree(n);
    OutDegree(n);
}

void RandomCalls::query_edges() {
    const Node n = node();
    ExistEdgeBetweenNodes(n, any_kind_of_node());
    if (std::optional<Node> b = bend()) {
        GetRoot(*b);
        if (std::optional<Edge> e = edge()) {
            NodeOnEdge(n, *e);
            NodeOnEdge(*b, *e);
        }
    }
}

void RandomCalls::query_order() {
    std::vector<Node> some;
    for (int i = 0; i < 8; ++i) {
        some.push_back(any_kind_of_node());
        GetRoot(some.back());
        IsRoot(some.back());
        some.back().IsDummy();
    }
    NodeByOwnershipComparator(some[0], some[1]);
    NodeByOwnershipComparator(some[2], some[2]);
    some[3] = some[4];
}

void RandomCalls::walk() {
    int visited = 0;
    const auto count = [&visited](const Node&) { ++visited; };
    ForEachNodeIn(any_kind_of_node(), count, chance(50), chance(50));
    ForEachNodeIn(node_or_root(), ProcessOutgoingEdges<void (*)(Edge)>(_remove_break_nodes), false,
                  true);
}

// Threads lead downwards only, so that no path of "main" nodes is a circle; no node owns itself.
std::string RandomCalls::random_text() {
    std::string text = "title\n[nodes]\n";
    const int count = 1 + below(static_cast<int>(most_nodes) / 2 + 1);
    const bool threads = chance(30);
    for (int i = 1; i <= count; ++i) {
        const char* const caption = !threads ? "n" : chance(30) ? "Thread" : "main";
        const int owner = chance(60) ? 0 : below(count + 2);
        text += std::to_string(chance(5) ? 1 : i) + " \"" + caption + "\" 0 " +
                std::to_string(owner == i || owner == 1 ? 0 : owner) + "\n";
    }
    text += "[edges]\n";
    for (int i = below(2 * count); i > 0; --i) {
        const int from = 1 + below(count);
        const int to = threads ? from + 1 + below(3) : 1 + below(count);
        text += std::to_string(from) + " " + std::to_string(to) + " \"e\"\n";
    }
    return text;
}

void RandomCalls::load() {
    std::istringstream in(random_text());
    Load(graph(), in);
    gather_nodes();
}

void RandomCalls::set_storage() {
    graph_ptr2<Graph>& changed = graph();
    old_roots.push_back(changed->GetRoot());
    if (chance(foreignness)) {
        changed->SetStorage(new DefaultStorage(root().get_impl()));
    } else {
        changed->SetStorage(new DefaultStorage(new DefaultRootNodeImpl));
    }
    gather_nodes();
}

void RandomCalls::renew_graph() {
    for (const Node& n : nodes) {
        removed.insert(removed.begin(), n);
    }
    replace_graph(static_cast<std::size_t>(below(static_cast<int>(graphs.size()))));
    const auto lives = [](const Node& n) { return !n.IsDummy(); };
    removed.erase(std::remove_if(removed.begin(), removed.end(), lives), removed.end());
    gather_nodes();
}

} // namespace nurvex7::testing_support
