#include "nurvex7/model/visual_store.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <typeinfo>
#include <vector>

namespace nurvex7 {

namespace {

/// So many segments of a route share a box at most.
constexpr std::size_t STRETCH = 4;
/// A segment that rises more than so many times its length along x is entered by itself, as what it
/// is. Of a box around it most would be empty, and a point in the midst of long edges would lie in
/// the boxes of all of them.
constexpr double STEEP = 4;
/// In place of the first break node of a stretch.
constexpr int WHOLE_ROUTE = -1;

// Of the clusters around a rectangle only the innermost count: one that owns another of them goes.
std::vector<int> _owners_within(node_impl_vector& clusters) {
    std::vector<int> ids;
    for (const graph_ptr<INodeImpl>& cluster : clusters) {
        if (cluster != 0) {
            ids.push_back(cluster->get_owner()->get_id());
        }
    }
    std::sort(ids.begin(), ids.end());
    return ids;
}

bool _within(double value, double low, double high) {
    return low <= value && value <= high;
}

} // namespace

NodeCollector::NodeCollector(double l, double t, double r, double b)
    : left(l), top(t), right(r), bottom(b), touching(new node_impl_vector),
      enclosing(new node_impl_vector) {}

void NodeCollector::operator()(const NodeVisInfo& info) {
    if (info.vis.get() == nullptr) {
        return;
    }
    const tamsel7::point<double> at = info.vis->get_position();
    const tamsel7::size<double> size = info.vis->get_size();
    if (at.x + size.width < left || at.x > right || at.y + size.height < top || at.y > bottom) {
        return;
    }
    const graph_ptr<INodeImpl> node = info.vis->get_node_impl();
    if (node != 0 && node->get_owner().get() == nullptr) {
        return; // a break node, or a deleted one
    }
    const bool cut =
        left <= at.x || at.x + size.width <= right || top <= at.y || at.y + size.height <= bottom;
    (cut ? touching : enclosing)->push_back(node);
}

graph_ptr<node_impl_vector> DefaultGraphVis::test_node_hit(double left, double top, double right,
                                                           double bottom) {
    NodeCollector collector(left, top, right, bottom);
    for (const int id : find_nodes_in({left, top, right, bottom})) {
        if (const NodeVisInfo* const info = node_map.find(id)) {
            collector(*info);
        }
    }
    const std::vector<int> owners = _owners_within(*collector.enclosing);
    for (const graph_ptr<INodeImpl>& cluster : *collector.enclosing) {
        if (!std::binary_search(owners.begin(), owners.end(), cluster->get_id())) {
            collector.touching->push_back(cluster);
        }
    }
    return collector.touching;
}

/// Ids of the nodes whose records may meet an area, those that were removed since among them.
///
/// Order   ascending id
std::vector<int> DefaultGraphVis::find_nodes_in(const tamsel7::rectangle<double>& area) {
    if (node_index.is_due()) {
        index_nodes();
    }
    node_index.pay_for_changed();
    std::vector<int> ids = node_index.changed;
    node_index.boxes.find(area, [&](int id) { ids.push_back(id); });
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    return ids;
}

// Of break nodes nothing is entered: they are never hit.
void DefaultGraphVis::index_nodes() {
    node_index.begin_build();
    node_map.for_each([&](int id, const NodeVisInfo& info) {
        if (id >= 0 && info.vis.get() != nullptr) {
            const tamsel7::point<double> at = info.vis->get_position();
            const tamsel7::size<double> size = info.vis->get_size();
            node_index.boxes.add({at.x, at.y, at.x + size.width, at.y + size.height}, id);
            static_cast<DefaultNodeVis&>(*info.vis).indexed = true;
        }
    });
    node_index.finish_build(node_index.boxes.size());
}

EdgeCollector::EdgeCollector(double l, double t, double r, double b, IGraphVis* store)
    : left(l), top(t), right(r), bottom(b), vis(store), hits(new edge_impl_vector) {}

void EdgeCollector::operator()(const EdgeVisInfo& info) {
    if (info.vis.get() == nullptr) {
        return;
    }
    const graph_ptr<node_impl_set> route = info.vis->get_break_nodes();
    if (route_hit(*route, 0, route->GetCount() - 1)) {
        hits->push_back(info.vis->get_edge_impl());
    }
}

bool EdgeCollector::route_hit(node_impl_set& route, int first, int last) const {
    if (first >= last) {
        return false;
    }
    tamsel7::point<double> a = place_in_store(*vis, route.GetItem(first));
    for (int i = first + 1; i <= last; ++i) {
        const tamsel7::point<double> c = place_in_store(*vis, route.GetItem(i));
        if (segment_hit(a, c)) {
            return true;
        }
        a = c;
    }
    return false;
}

// A segment with both ends beside the rectangle meets its right side, its left side, or has to
// cross top and bottom both, so that the top alone is looked at. A quotient that is not a number is
// out of every range.
bool EdgeCollector::segment_hit(const tamsel7::point<double>& a,
                                const tamsel7::point<double>& c) const {
    const auto holds = [&](const tamsel7::point<double>& p) {
        return _within(p.x, left, right) && _within(p.y, top, bottom);
    };
    if (holds(a) || holds(c)) {
        return true;
    }
    if ((a.x >= right && c.x >= right) || (a.x <= left && c.x <= left) ||
        (a.y >= bottom && c.y >= bottom) || (a.y <= top && c.y <= top)) {
        return false;
    }
    const double dy = a.y - c.y;
    const double dx = a.x - c.x;
    return _within((right - a.x) * dy / dx + a.y, top, bottom) ||
           _within((left - a.x) * dy / dx + a.y, top, bottom) ||
           _within(a.x + dx * (top - a.y) / dy, left, right);
}

// Edges come by ascending id. One that has changed is walked as a whole, and none of its stretches
// counts, which are those of the old route.
graph_ptr<edge_impl_vector> DefaultGraphVis::test_edge_hit(double left, double top, double right,
                                                           double bottom) {
    EdgeCollector collector(left, top, right, bottom, this);
    const std::vector<Stretch> found = find_stretches_in({left, top, right, bottom});
    walks_edges = true;
    for (auto at = found.begin(); at != found.end();) {
        const int id = at->edge_id;
        const EdgeVisInfo* const info = edge_map.find(id);
        bool open = info != nullptr;
        for (; at != found.end() && at->edge_id == id; ++at) {
            open = open && test_stretch(*at, *info, collector);
        }
    }
    walks_edges = false;
    return collector.hits;
}

/// Gives whether there is more to test of the edge.
bool DefaultGraphVis::test_stretch(const Stretch& stretch, const EdgeVisInfo& info,
                                   EdgeCollector& collector) {
    auto& edge = static_cast<DefaultEdgeVis&>(*info.vis);
    if (!edge.indexed) {
        collector(info);
        return false;
    }
    const graph_ptr<node_impl_set> route = edge.get_break_nodes();
    if (!collector.route_hit(*route, stretch.first, stretch.last)) {
        return true;
    }
    collector.hits->push_back(edge.get_edge_impl());
    return false;
}

/// The stretches that may meet an area, and every edge that has changed.
///
/// Order   ascending edge id
std::vector<DefaultGraphVis::Stretch>
DefaultGraphVis::find_stretches_in(const tamsel7::rectangle<double>& area) {
    if (edge_index.is_due()) {
        index_edges();
    }
    edge_index.pay_for_changed();
    std::vector<Stretch> found;
    for (const int id : edge_index.changed) {
        found.push_back({id, WHOLE_ROUTE, WHOLE_ROUTE});
    }
    edge_index.boxes.find(
        area, [&](int place) { found.push_back(stretches[static_cast<std::size_t>(place)]); });
    std::sort(found.begin(), found.end(),
              [](const Stretch& a, const Stretch& b) { return a.edge_id < b.edge_id; });
    return found;
}

void DefaultGraphVis::index_edges() {
    edge_index.begin_build();
    stretches.clear();
    walks_edges = true;
    edge_map.for_each([&](int id, const EdgeVisInfo& info) {
        index_route(id, static_cast<DefaultEdgeVis&>(*info.vis));
    });
    walks_edges = false;
    edge_index.finish_build(edge_map.size()); // what changes is an edge, with all its stretches
}

// An edge of another kind that has lost its ends counts as changed, as it may find them again.
void DefaultGraphVis::index_route(int id, DefaultEdgeVis& edge) {
    const graph_ptr<node_impl_set> route = edge.get_break_nodes();
    const graph_ptr<IEdgeImpl> held = edge.get_edge_impl();
    const IEdgeImpl& of_a_kind = *held;
    if (!edge.has_route() && typeid(of_a_kind) != typeid(DefaultEdgeImpl)) {
        edge.indexed = false;
        edge_index.changed.push_back(id);
        return;
    }
    places.clear();
    for (int i = 0; i < route->GetCount(); ++i) {
        places.push_back(place_in_store(*this, route->GetItem(i)));
    }
    add_stretches(id);
    edge.mark_indexed();
}

// A place that is no number belongs to no box: a segment that ends there is hit at its other end
// or not at all.
void DefaultGraphVis::add_stretches(int id) {
    constexpr double FAR = std::numeric_limits<double>::infinity();
    const auto is_steep = [&](std::size_t i) {
        return std::abs(places[i + 1].y - places[i].y) >
               STEEP * std::abs(places[i + 1].x - places[i].x);
    };
    std::size_t last = 0;
    for (std::size_t first = 0; first + 1 < places.size(); first = last) {
        last = first + 1;
        while (!is_steep(first) && last - first < STRETCH && last + 1 < places.size() &&
               !is_steep(last)) {
            ++last;
        }
        const auto place = static_cast<int>(stretches.size());
        stretches.push_back({id, static_cast<int>(first), static_cast<int>(last)});
        if (is_steep(first)) {
            edge_index.boxes.add(places[first], places[last], place);
            continue;
        }
        tamsel7::rectangle<double> box{FAR, FAR, -FAR, -FAR};
        for (std::size_t i = first; i <= last; ++i) {
            const tamsel7::point<double>& at = places[i];
            box = {std::min(box.left, at.x), std::min(box.top, at.y), std::max(box.right, at.x),
                   std::max(box.bottom, at.y)};
        }
        edge_index.boxes.add(box, place);
    }
}

std::size_t DefaultGraphVis::get_hit_index_memory() const {
    return node_index.boxes.get_memory() + edge_index.boxes.get_memory() +
           stretches.capacity() * sizeof(Stretch);
}

} // namespace nurvex7
