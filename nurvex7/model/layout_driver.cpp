#include "nurvex7/model/graph.h"
#include "nurvex7/model/moving.h"
#include "nurvex7/platform/tamsel7/painter.h"

#include <unordered_set>
#include <vector>

namespace nurvex7 {

namespace {

using node_list = std::vector<graph_ptr<INodeImpl>>;

// Nodes to lay out, in the order in which they were entered; the walk runs backward.
struct work_list {
    node_list nodes;
    bool holds_root = false;
};

// Deliberate: once the root is in, it covers everything that comes after it, but not what came
// before; and a node other than the root that was queued twice runs twice.
void check_and_insert(work_list& work, const graph_ptr<INodeImpl>& node) {
    if (work.holds_root || !belongs_to_root(node)) {
        return;
    }
    work.holds_root = node == 0;
    work.nodes.push_back(node);
}

// Nodes whose sizes have to follow, owners before what they own. Ids beside the list answer whether
// a node stands in it.
struct resize_list {
    node_list nodes;
    std::unordered_set<int> behind_first; ///< ids of all nodes but the first

    // Deliberate: the first node is not compared, so the root, which stands first, is entered once
    // more by the next node that reaches it, and after that not again.
    void insert(const graph_ptr<INodeImpl>& node) {
        if (nodes.empty()) {
            nodes.push_back(node);
        } else if (behind_first.insert(node->get_id()).second) {
            nodes.push_back(node);
        }
    }

    // What stands behind the first node brought all its owners along. The root has to be there too
    // before that says that nothing is left to enter.
    bool knows_way_up_from(const graph_ptr<INodeImpl>& node) const {
        return behind_first.count(0) != 0 && behind_first.count(node->get_id()) != 0;
    }
};

// A node that hangs in the air, with no root above it, is passed over.
void insert_with_owners(resize_list& work, const graph_ptr<INodeImpl>& node) {
    node_list innermost_first;
    graph_ptr<INodeImpl> above = node;
    while (above.get() != nullptr && !work.knows_way_up_from(above)) {
        innermost_first.push_back(above);
        if (above == 0) {
            break;
        }
        above = owner_above(above);
    }
    if (above.get() == nullptr) {
        return;
    }
    for (auto entered = innermost_first.rbegin(); entered != innermost_first.rend(); ++entered) {
        work.insert(*entered);
    }
}

void _insert_owners(resize_list& work, node_impl_set& queued) {
    for (int i = 0; i < queued.GetCount(); ++i) {
        const graph_ptr<INodeImpl> node = queued.GetItem(i);
        if (node.get() != nullptr && node != 0) {
            insert_with_owners(work, owner_above(node));
        }
    }
}

work_list _collect(node_impl_set& queued) {
    work_list work;
    for (int i = 0; i < queued.GetCount(); ++i) {
        check_and_insert(work, queued.GetItem(i));
    }
    return work;
}

// Keeps a painter ready for measuring. A bracket that is open already belongs to somebody else.
class paint_bracket {
public:
    explicit paint_bracket(tamsel7::IPainter* p)
        : painter(p != nullptr && !p->paint_started ? p : nullptr) {
        if (painter != nullptr) {
            painter->BeginPaint(tamsel7::IPainter::StdSettings::STANDARD);
        }
    }
    void close() {
        if (painter != nullptr) {
            painter->EndPaint();
        }
    }

private:
    tamsel7::IPainter* painter;
};

// Runs one operation of their layouts on the nodes of a list, the last one first. A graph whose
// default layout was taken away leaves its nodes as they are.
template <typename After>
void _run(const graph_ptr<IGraphVis>& vis, const node_list& nodes, void (ILayout::*operation)(Node),
          After after) {
    for (auto node = nodes.rbegin(); node != nodes.rend(); ++node) {
        const graph_ptr2<ILayout> layout = vis->get_node_layout(*node);
        if (layout.get() != nullptr) {
            (layout.get()->*operation)(Node(vis, *node));
            after(Node(vis, *node));
        }
    }
}

// Layouts leave what a node owns relative to the node.
void _make_absolute(const Node& node) {
    ShiftPosition(node, tamsel7::point<double>{0, 0});
}

} // namespace

// Deliberate: the lists stay filled while the layouts run, so what these queue goes unseen.
bool Graph::RecalculateLayout(tamsel7::IPainter* painter) {
    const graph_ptr<node_impl_set> to_make = vis->get_make_list();
    const graph_ptr<node_impl_set> to_update = vis->get_update_list();
    const graph_ptr<node_impl_set> to_resize = vis->get_resize_list();
    if (to_make->GetCount() == 0 && to_update->GetCount() == 0 && to_resize->GetCount() == 0) {
        return false;
    }
    const work_list make_work = _collect(*to_make);
    const work_list update_work = _collect(*to_update);
    resize_list resize_work;
    for (int i = 0; i < to_resize->GetCount(); ++i) {
        insert_with_owners(resize_work, to_resize->GetItem(i));
    }
    _insert_owners(resize_work, *to_make);
    _insert_owners(resize_work, *to_update);

    paint_bracket bracket(painter);
    _run(vis, make_work.nodes, &ILayout::Make, &_make_absolute);
    _run(vis, update_work.nodes, &ILayout::Update, &_make_absolute);
    _run(vis, resize_work.nodes, &ILayout::Resize, [](const Node&) {});
    bracket.close();

    vis->clear_make_list();
    vis->clear_update_list();
    vis->clear_resize_list();
    return true;
}

} // namespace nurvex7
