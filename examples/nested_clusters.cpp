// Clusters are nodes that own nodes. Edges join any two nodes; where one crosses the border of a
// cluster, its route passes through a point on that border.
#include "nurvex7/nurvex7.h"

#include <cstdio>

namespace {

using nurvex7::Node;

Node add_to(Node owner, const char* caption) {
    Node node = owner.AddNode();
    node.SetCaption(caption);
    return node;
}

void print_node(const Node& node) {
    if (nurvex7::IsRoot(node)) {
        return;
    }
    const tamsel7::rectangle<double> r = nurvex7::MakeDRect(node.GetPosition(), node.GetSize());
    std::printf("%-8s %g, %g to %g, %g\n", node.GetCaption().c_str(), r.left, r.top, r.right,
                r.bottom);
}

} // namespace

int main() {
    const nurvex7::graph_ptr2<nurvex7::Graph> graph(new nurvex7::Graph, /*owns=*/true);
    const Node shop = add_to(graph->GetRoot(), "shop");
    const Node basket = add_to(shop, "basket");
    Node pages = add_to(basket, "page");
    const Node bank = add_to(graph->GetRoot(), "bank");
    const Node account = add_to(bank, "account");
    nurvex7::Edge pays = pages.LinkTo(account); // out of two clusters and into a third

    graph->RecalculateLayout(nullptr);
    nurvex7::ForEachNodeIn(graph->GetRoot(), print_node, /*post_order=*/false,
                           /*include_self=*/true);

    nurvex7::NodeSet route = pays.GetBreakNodes();
    std::printf("route   ");
    for (int i = 0; i < route.GetCount(); ++i) {
        const tamsel7::point<double> p = route.GetItem(i).GetPosition();
        std::printf(" %g,%g", p.x, p.y);
    }
    std::printf("\n");
}
