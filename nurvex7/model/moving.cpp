#include "nurvex7/model/moving.h"

#include "nurvex7/model/break_run.h"
#include "nurvex7/model/queries.h"
#include "nurvex7/model/structure_index.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace nurvex7 {

namespace {

using point = tamsel7::point<double>;

/// Where a node's owner stands; what has no owner moves against nothing.
point origin_of(const Node& node) {
    return node.IsDummy() ? point() : node.GetOwner().GetPosition();
}

bool is_nothing(const point& by) {
    return by.x == 0 && by.y == 0;
}

// Adding nothing leaves what stands as it is, but for the sign of a zero, which nobody tells from
// another zero.
void shift_run(const Edge& edge, const point& by, const Node& owner) {
    const BreakRun run(edge, owner);
    if (!is_nothing(by)) {
        run.shift(by);
    }
}

/// Every run of the nest by what its owner's inside is shifted by. The queries walk the inside of
/// their node, so that asking them for every node of a nest costs the nest once for every level.
void shift_runs(const StructureIndex& index, const std::vector<point>& by_of_owner) {
    const std::vector<Node>& nodes = index.GetNodes();
    index.ForEachRun([&](int edge, std::size_t owner) {
        shift_run(index.EdgeAt(edge), by_of_owner[owner], nodes[owner]);
    });
}

std::shared_ptr<const StructureIndex> runs_inside(const Node& node) {
    std::shared_ptr<const StructureIndex> kept = StructureIndex::FindKept(node);
    return kept != nullptr
               ? kept
               : std::make_shared<const StructureIndex>(node, StructureIndex::OnlyRuns());
}

bool has_flat_inside(const Node& node) {
    if (const std::shared_ptr<const StructureIndex> kept = StructureIndex::FindKept(node)) {
        return kept->IsFlat();
    }
    NodeSet owned = node.GetOwned();
    for (int i = 0; i < owned.GetCount(); ++i) {
        if (owned.GetItem(i).GetOwned().GetCount() != 0) {
            return false;
        }
    }
    return true;
}

// True where all that a node owns is shifted by nothing. What the root of a flat graph owns stands
// where it stood, and its edges need no look: a run that nobody has entered is as good as an empty
// one.
bool shifts_flat_by_nothing(const Node& owner, const point& by) {
    return is_nothing(by) && has_flat_inside(owner);
}

void set_end(NodeSet route, int index, double x, double y) {
    if (route.GetCount() > 0) {
        route.GetItem(index).SetPosition(x, y);
    }
}

} // namespace

void _shift(Node node, const point& by) {
    const point at = node.GetPosition();
    node.SetPosition(at.x + by.x, at.y + by.y);
}

void _break_nodes_shift(graph_ptr2<IGraphSet<NodeEdgePair>> pairs, const point& by, Node owner) {
    for (int i = 0; i < pairs->GetCount(); ++i) {
        shift_run(pairs->GetItem(i).edge, by, owner);
    }
}

// Deliberate: GetParentsEx is not asked. The bends between two siblings belong to the source.
int ShiftWithEdges(Node node, point by) {
    _shift(node, by);
    const Node owner = node.GetOwner();
    _break_nodes_shift(GetChildrenEx(node), by, owner);
    _break_nodes_shift(GetEdgesOutEx(node), by, owner);
    _break_nodes_shift(GetEdgesInEx(node), by, owner);
    return 0;
}

int UnshiftWithEdges(Node node) {
    const point origin = origin_of(node);
    return ShiftWithEdges(node, {-origin.x, -origin.y});
}

int _shift_position(Node node, point by) {
    const point origin = origin_of(node);
    return ShiftWithEdges(node, {by.x + origin.x, by.y + origin.y});
}

// Owners come before what they own, so that each node is shifted by the new place of its owner. The
// runs can wait: what stands in one owner is shifted by one vector, and only once the owner stands.
void ShiftPosition(Node node, point by) {
    _shift(node, by);
    const point at_top = node.GetPosition();
    if (shifts_flat_by_nothing(node, {by.x + at_top.x, by.y + at_top.y})) {
        return;
    }
    const std::shared_ptr<const StructureIndex> index = runs_inside(node);
    const std::vector<Node>& nodes = index->GetNodes();
    std::vector<point> by_of_owner;
    by_of_owner.reserve(nodes.size());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (i > 0) {
            _shift(nodes[i], by_of_owner[index->OwnerPlaceOf(i)]);
        }
        const point at = nodes[i].GetPosition();
        by_of_owner.push_back({by.x + at.x, by.y + at.y});
    }
    shift_runs(*index, by_of_owner);
}

void ShiftPosition(Node node, double x, double y) {
    ShiftPosition(node, point{x, y});
}

// The other way round: a node is taken back while its owner still stands at its absolute place.
void UnshiftPosition(Node node) {
    const point at_top = node.GetPosition();
    if (shifts_flat_by_nothing(node, {-at_top.x, -at_top.y})) {
        return;
    }
    const std::shared_ptr<const StructureIndex> index = runs_inside(node);
    const std::vector<Node>& nodes = index->GetNodes();
    std::vector<point> by_of_owner;
    by_of_owner.reserve(nodes.size());
    for (const Node& n : nodes) {
        const point at = n.GetPosition();
        by_of_owner.push_back({-at.x, -at.y});
    }
    shift_runs(*index, by_of_owner);
    for (std::size_t i = 1; i < nodes.size(); ++i) {
        _shift(nodes[i], by_of_owner[index->OwnerPlaceOf(i)]);
    }
}

void MoveNode(Node node, double x, double y) {
    node.SetPosition(x, y);
    const tamsel7::size<double> size = node.GetSize();
    EdgeSet edges_out = node.GetEdgesOut();
    for (int i = 0; i < edges_out.GetCount(); ++i) {
        set_end(edges_out.GetItem(i).GetBreakNodes(), 0, x + size.width, y + 0.5 * size.height);
    }
    EdgeSet edges_in = node.GetEdgesIn();
    for (int i = 0; i < edges_in.GetCount(); ++i) {
        NodeSet route = edges_in.GetItem(i).GetBreakNodes();
        set_end(route, route.GetCount() - 1, x, y + 0.5 * size.height);
    }
}

} // namespace nurvex7
