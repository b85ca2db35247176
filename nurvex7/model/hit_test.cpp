#include "nurvex7/model/visual_store.h"

#include <algorithm>
#include <vector>

namespace nurvex7 {

namespace {

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
    node_map.for_each([&](int id, const NodeVisInfo& info) {
        if (id >= 0) { // break nodes are never hit
            collector(info);
        }
    });
    const std::vector<int> owners = _owners_within(*collector.enclosing);
    for (const graph_ptr<INodeImpl>& cluster : *collector.enclosing) {
        if (!std::binary_search(owners.begin(), owners.end(), cluster->get_id())) {
            collector.touching->push_back(cluster);
        }
    }
    return collector.touching;
}

EdgeCollector::EdgeCollector(double l, double t, double r, double b, IGraphVis* store)
    : left(l), top(t), right(r), bottom(b), vis(store), hits(new edge_impl_vector) {}

void EdgeCollector::operator()(const EdgeVisInfo& info) {
    if (info.vis.get() == nullptr) {
        return;
    }
    const graph_ptr<node_impl_set> route = info.vis->get_break_nodes();
    const int count = route->GetCount();
    if (count < 2) {
        return;
    }
    tamsel7::point<double> a = vis->get_node_vis(route->GetItem(0))->get_position();
    for (int i = 1; i < count; ++i) {
        const tamsel7::point<double> c = vis->get_node_vis(route->GetItem(i))->get_position();
        if (segment_hit(a, c)) {
            hits->push_back(info.vis->get_edge_impl());
            return;
        }
        a = c;
    }
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

graph_ptr<edge_impl_vector> DefaultGraphVis::test_edge_hit(double left, double top, double right,
                                                           double bottom) {
    EdgeCollector collector(left, top, right, bottom, this);
    walks_edges = true; // bends without a record get one on the way
    edge_map.for_each([&](int, const EdgeVisInfo& info) { collector(info); });
    walks_edges = false;
    return collector.hits;
}

} // namespace nurvex7
