#include "nurvex7/model/topology.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace nurvex7;

using node_ptr = graph_ptr<INodeImpl>;
using edge_ptr = graph_ptr<IEdgeImpl>;

// A root that takes its content apart at the end, as a graph does.
struct Topology : testing::Test {
    ~Topology() override { root->remove(); }

    node_ptr add(const std::string& caption) { return add(root, caption); }
    node_ptr add(const node_ptr& owner, const std::string& caption) {
        node_ptr node = owner->add_node();
        node->set_caption(caption);
        return node;
    }
    edge_ptr link(const node_ptr& from, const node_ptr& to) {
        edge_ptr edge = from->link_to(to);
        edge->set_caption(from->get_caption() + ">" + to->get_caption());
        return edge;
    }

    node_ptr root{new DefaultRootNodeImpl};
};

template <typename Set>
std::string captions(const Set& set) {
    std::string text;
    for (int i = 0; i < set->GetCount(); ++i) {
        text += (i > 0 ? " " : "") + set->GetItem(i)->get_caption();
    }
    return text;
}

// What a kept handle tells after every change is compared with the plain form of the steps in
// another place; here stands what would look like a slip, and what the plain form leaves out.
TEST_F(Topology, ASetThatWasTakenBeforeStaysLive) {
    const node_ptr a = add("a");
    const node_ptr b = add("b");
    link(a, b);
    const graph_ptr<node_impl_set> children = a->get_children();
    link(a, add("c"));
    link(a, b);
    EXPECT_EQ(captions(a->get_children()), "b c");
    EXPECT_EQ(captions(children), "b c");
}

// Deliberate: the edge in turn is gone from the set of the deleted node when it is searched there,
// so every other edge leaves in its place and keeps its ends.
TEST_F(Topology, ADeletedNodeUnlinksEveryOtherEdgeIn) {
    const node_ptr target = add("t");
    std::vector<node_ptr> sources;
    std::vector<edge_ptr> edges;
    for (const char* name : {"a", "b", "c"}) {
        sources.push_back(add(name));
        edges.push_back(link(sources.back(), target));
    }
    target->remove();
    EXPECT_EQ(target->get_edges_in()->GetCount(), 0);
    EXPECT_EQ(edges[0]->to().get(), nullptr);
    EXPECT_EQ(edges[2]->to().get(), nullptr);
    ASSERT_EQ(edges[1]->to().get(), target.get());
    EXPECT_EQ(captions(sources[0]->get_edges_out()), "");
    EXPECT_EQ(captions(sources[1]->get_edges_out()), "b>t");
    EXPECT_EQ(captions(sources[2]->get_edges_out()), "");
}

// Deliberate: the source's set is searched twice for the same edge, and the second search takes the
// next higher edge, or the last one.
TEST_F(Topology, ADeletedTargetTakesANeighbourOutOfTheEdgesOfItsSource) {
    const node_ptr a = add("a");
    const node_ptr b = add("b");
    const node_ptr c = add("c");
    const node_ptr d = add("d");
    link(a, b);
    link(a, c);
    const edge_ptr ad = link(a, d);
    c->remove();
    EXPECT_EQ(captions(a->get_edges_out()), "a>b");
    EXPECT_EQ(captions(d->get_edges_in()), "a>d") << "its own ends know nothing of it";
    EXPECT_TRUE(ad->from() == a);
}

// Deliberate: edges out are merely forgotten.
TEST_F(Topology, ADeletedSourceStaysTheSourceOfItsEdges) {
    const node_ptr a = add("a");
    const node_ptr b = add("b");
    const edge_ptr ab = link(a, b);
    a->remove();
    EXPECT_EQ(a->get_edges_out()->GetCount(), 0);
    EXPECT_EQ(captions(b->get_edges_in()), "a>b");
    EXPECT_TRUE(ab->from() == a);
    EXPECT_EQ(captions(b->get_parents()), "a");
}

// Callers may hold no more than an address.
TEST_F(Topology, RemovalBearsThatTheGraphHoldsTheLastCount) {
    INodeImpl* const a = add("a").get();
    INodeImpl* const b = add(a, "b").get();
    IEdgeImpl* const ab = a->link_to(b).get();
    b->link_to(a);
    ab->remove();
    EXPECT_EQ(b->get_edges_in()->GetCount(), 0);
    a->remove();
    EXPECT_EQ(root->get_owned()->GetCount(), 0);
}

// Deliberate: a node may be moved under itself. It hangs in the air then, and every walk upward has
// to end there.
TEST_F(Topology, ANodeMovedUnderItselfIsAcceptedAndHangsNobody) {
    const node_ptr a = add("a");
    const node_ptr b = add(a, "b");
    const node_ptr c = add("c");
    a->set_owner(a);
    EXPECT_TRUE(a->get_owner() == a);
    EXPECT_EQ(captions(root->get_owned()), "c");
    EXPECT_EQ(captions(a->get_owned()), "b a");
    EXPECT_FALSE(belongs_to_root(b));
    EXPECT_EQ(owner_above(a).get(), nullptr);
    c->set_owner(b);
    EXPECT_TRUE(c->get_owner() == root) << "what hangs in the air takes nobody in";
    a->set_owner(a);
    EXPECT_EQ(captions(a->get_owned()), "b a");
    b->set_owner(root);
    EXPECT_TRUE(belongs_to_root(b));
    a->set_owner(root);
    EXPECT_EQ(captions(root->get_owned()), "c b a");
    a->set_owner(a);
    a->remove();
    EXPECT_EQ(a->get_owner().get(), nullptr);
}

TEST_F(Topology, TheRootBearsNothingAndOnlyRealNodesAreLinkedTo) {
    const node_ptr a = add("a");
    root->set_caption("root");
    root->set_tag(7);
    root->set_condition(1);
    root->set_owner(a);
    EXPECT_EQ(root->get_caption(), "");
    EXPECT_EQ(root->get_tag() + root->get_condition(), 0);
    EXPECT_EQ(root->get_owner().get(), nullptr);
    EXPECT_NE(root->get_edges_in().get(), root->get_edges_in().get());
    EXPECT_EQ(root->link_to(a).get(), nullptr);
    EXPECT_EQ(a->link_to(root).get(), nullptr);
    EXPECT_EQ(a->link_to(node_ptr()).get(), nullptr);
    a->set_owner(node_ptr());
    EXPECT_TRUE(a->get_owner() == root);
}

TEST_F(Topology, JoinedSetsKeepTheirOrderAndLeaveTheOriginalsAlone) {
    const graph_ptr<node_impl_vector> x(new node_impl_vector);
    const graph_ptr<node_impl_vector> y(new node_impl_vector);
    const node_ptr a = add("a");
    const node_ptr b = add("b");
    x->push_back(b);
    y->push_back(a);
    y->sort();
    const graph_ptr<node_impl_vector> joined = _join(x, y);
    EXPECT_EQ(captions(joined), "b a");
    EXPECT_FALSE(joined->is_sorted());
    _append(y, x);
    EXPECT_EQ(captions(y), "a b");
    EXPECT_FALSE(y->is_sorted());
    EXPECT_EQ(captions(x), "b");
}

// Deep and wide: a recursion over owners would not come back from here, and removals that each move
// what stands behind them would not come back in anybody's lifetime.
TEST_F(Topology, DeletionBearsDeepNestsLongRowsAndHubs) {
    node_ptr innermost = root;
    for (int depth = 0; depth < 100'000; ++depth) {
        innermost = innermost->add_node();
    }
    const node_ptr hub = add("hub");
    std::vector<node_ptr> row;
    for (int i = 0; i < 100'000; ++i) {
        row.push_back(root->add_node());
    }
    std::shuffle(row.begin(), row.end(), std::mt19937(1));
    for (const node_ptr& node : row) {
        hub->link_to(node);
        node->link_to(hub);
    }
    std::shuffle(row.begin(), row.end(), std::mt19937(2));
    for (std::size_t i = 0; i < row.size() / 2; ++i) {
        row[i]->remove();
    }
    innermost->set_owner(hub);
    hub->remove();
    EXPECT_EQ(innermost->get_owner().get(), nullptr);
    root->remove();
    EXPECT_EQ(root->get_owned()->GetCount(), 0);
    EXPECT_EQ(row.back()->get_owner().get(), nullptr);
}

} // namespace
