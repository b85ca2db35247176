#include "tests/support/plain_queries.h"
#include "tests/support/random_calls.h"

// Calls of layouts: queued, and straight on the objects in any order.

namespace nurvex7::testing_support {

std::vector<RandomCalls::Call> RandomCalls::layout_calls() {
    return {
        {"set_layout", 6, &RandomCalls::set_layout},
        {"set_default_layout", 1, &RandomCalls::set_default_layout},
        {"queue_make", 5, &RandomCalls::queue_make},
        {"queue_update", 15, &RandomCalls::queue_update},
        {"queue_resize", 10, &RandomCalls::queue_resize},
        {"queue_resize_all", 2, &RandomCalls::queue_resize_all},
        {"recalculate", 20, &RandomCalls::recalculate},
        {"run_make", 4, &RandomCalls::run_make},
        {"run_update", 12, &RandomCalls::run_update},
        {"run_resize", 15, &RandomCalls::run_resize},
        {"run_by_layout_of_node", 6, &RandomCalls::run_by_layout_of_node},
        {"init_again", 1, &RandomCalls::init_again},
        {"look_ahead", 8, &RandomCalls::look_ahead},
    };
}

void RandomCalls::set_layout() {
    Node n = any_kind_of_node();
    n.SetLayout(chance(50) ? layout_handle() : graph_ptr2<ILayout>());
    n.GetLayout();
}

void RandomCalls::set_default_layout() {
    if (chance(foreignness)) {
        graph()->SetDefaultLayout(chance(80) ? layout_handle() : graph_ptr2<ILayout>());
    }
}

void RandomCalls::queue_make() {
    any_kind_of_node().MakeLayout();
}

void RandomCalls::queue_update() {
    any_kind_of_node().UpdateLayout();
}

void RandomCalls::queue_resize() {
    any_kind_of_node().ResizeSelf();
}

void RandomCalls::queue_resize_all() {
    Node n = any_kind_of_node();
    n.ResizeAll();
    _apply_resize_all(n);
}

bool RandomCalls::may_update(const ILayout& by, const Node& owner) const {
    const auto* const asked = dynamic_cast<const IncLayout*>(&by);
    return asked == nullptr || asked->LookAhead(owner) != UpdateOutlook::DOES_NOT_FIT;
}

// An Update that finds no place for a new node never ends; what is queued for it has to go. Where
// two graphs share a layout and edges, the Make of one changes what an Update of the other meets.
void RandomCalls::forget_updates_without_end() {
    for (const graph_ptr2<Graph>& g : graphs) {
        const graph_ptr<IGraphVis> store = g->GetRoot().get_vis();
        const graph_ptr<node_impl_set> queued = store->get_update_list();
        bool ends = foreignness == 0 || store->get_make_list()->GetCount() == 0;
        for (int i = 0; i < queued->GetCount(); ++i) {
            const Node owner(store, queued->GetItem(i));
            const graph_ptr2<ILayout> by = owner.GetLayout();
            ends = ends && (by.get() == nullptr || may_update(*by, owner));
        }
        if (!ends) {
            store->clear_update_list();
        }
    }
}

void RandomCalls::recalculate() {
    forget_updates_without_end();
    graph()->RecalculateLayout(chance(50) ? &painter : nullptr);
    painter.take();
    ++runs;
}

void RandomCalls::run_make() {
    layout().Make(any_kind_of_node());
    ++runs;
}

void RandomCalls::run_update() {
    const Node owner = any_kind_of_node();
    ILayout& by = layout();
    if (may_update(by, owner)) {
        by.Update(owner);
        ++runs;
    }
}

void RandomCalls::run_resize() {
    layout().Resize(any_kind_of_node());
    ++runs;
}

void RandomCalls::run_by_layout_of_node() {
    const Node owner = any_kind_of_node();
    const graph_ptr2<ILayout> by = owner.GetLayout();
    if (by.get() != nullptr && !may_update(*by, owner)) {
        _make_layout(owner);
    } else {
        _update_layout(owner);
    }
    ++runs;
}

// Every further Init has all phases run once more, so that only a few make sense.
void RandomCalls::init_again() {
    const std::size_t at = static_cast<std::size_t>(below(static_cast<int>(layouts.size())));
    if (inits[at] < 3 && chance(20)) {
        layouts[at]->Init(number(), number(), number(), number());
        ++inits[at];
    }
}

void RandomCalls::look_ahead() {
    static_cast<IncLayout&>(*layouts[0]).LookAhead(any_kind_of_node());
}

} // namespace nurvex7::testing_support
