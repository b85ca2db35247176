#include "nurvex7/model/graph.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

using namespace nurvex7;

struct quiet_layout : ILayout {
    void Make(Node) override {}
    void Update(Node) override {}
    void Resize(Node) override {}
};

struct quiet_handler : INodeHandler {
    void Draw(Node, tamsel7::IPainter*) override {}
    tamsel7::size<double> GetSize(Node) override { return {}; }
    SizeAndOrigin GetSize(Node, tamsel7::size<double>) override { return {}; }
};

struct VisualStore : testing::Test {
    graph_ptr<DefaultGraphVis> store{new DefaultGraphVis};
    graph_ptr<INodeImpl> root{new DefaultRootNodeImpl};
    graph_ptr<INodeImpl> node = root->add_node();
    quiet_layout own_layout;
    quiet_handler own_handler;
    graph_ptr2<ILayout> layout{&own_layout, /*owns=*/false};
    graph_ptr2<INodeHandler> handler{&own_handler, /*owns=*/false};

    ~VisualStore() override { root->remove(); }
};

TEST_F(VisualStore, RecordsComeWithTheFirstQuestionAndGoWhenRemoved) {
    EXPECT_EQ(store->get_node_record_count(), 0U);
    const graph_ptr<INodeVis> record = store->get_node_vis(node);
    record->set_position({3, 4});
    record->set_size({5, 6});
    EXPECT_EQ(store->get_node_vis(node).get(), record.get());
    EXPECT_EQ(store->get_node_record_count(), 1U);
    store->remove_node_vis(node);
    store->remove_node_vis(node);
    EXPECT_EQ(store->get_node_record_count(), 0U);
    EXPECT_EQ(store->get_node_vis(node)->get_position(), tamsel7::point<double>());
    EXPECT_EQ(store->get_node_vis(node)->get_size(), tamsel7::size<double>());
}

// Nodes and edges remember their record. It must not answer for them when it is nobody's any more,
// or when another store is asked.
TEST_F(VisualStore, ARecordThatSomebodyKeepsNoLongerAnswersForItsNode) {
    Node handle(store, node);
    handle.SetPosition({3, 4});
    const graph_ptr<INodeVis> kept = store->get_node_vis(node);
    store->remove_node_vis(node);
    EXPECT_EQ(handle.GetPosition(), tamsel7::point<double>());
    handle.SetPosition({5, 6});
    EXPECT_EQ(kept->get_position(), (tamsel7::point<double>{3, 4}));
    EXPECT_EQ(store->get_node_vis(node)->get_position(), (tamsel7::point<double>{5, 6}));
}

TEST_F(VisualStore, TwoStoresKeepTheirRecordsOfANodeApart) {
    const graph_ptr<IEdgeImpl> edge = node->link_to(node);
    std::vector<graph_ptr<INodeVis>> beyond; // records that live longer than their stores
    std::vector<graph_ptr<IEdgeVis>> edges_beyond;
    for (int i = 0; i < 100; ++i) { // a new store often lies where the last one lay
        graph_ptr<DefaultGraphVis> other{new DefaultGraphVis};
        Node here(store, node);
        Node there(other, node);
        ASSERT_EQ(there.GetPosition(), tamsel7::point<double>());
        here.SetPosition({1.0 * i, 2});
        there.SetPosition({3, 4});
        other->get_edge_vis(edge)->add_break_nodes_in(0, 2);
        ASSERT_EQ(here.GetPosition(), (tamsel7::point<double>{1.0 * i, 2}));
        ASSERT_EQ(there.GetPosition(), (tamsel7::point<double>{3, 4}));
        ASSERT_EQ(store->get_edge_vis(edge)->get_break_nodes_in(0)->GetCount(), 0);
        beyond.push_back(other->get_node_vis(node));
        edges_beyond.push_back(other->get_edge_vis(edge));
    }
}

TEST_F(VisualStore, TheRootsOfTwoGraphsShareARecord) {
    const graph_ptr<INodeImpl> other_root(new DefaultRootNodeImpl);
    Node first(store, root);
    Node second(store, other_root);
    first.SetPosition({1, 2});
    EXPECT_EQ(second.GetPosition(), (tamsel7::point<double>{1, 2}));
    second.SetPosition({3, 4});
    EXPECT_EQ(first.GetPosition(), (tamsel7::point<double>{3, 4}));
}

TEST_F(VisualStore, EdgeRecordsLikewise) {
    const graph_ptr<IEdgeImpl> edge = node->link_to(node);
    const graph_ptr<IEdgeVis> record = store->get_edge_vis(edge);
    record->add_break_nodes_in(0, 3);
    EXPECT_EQ(store->get_edge_vis(edge).get(), record.get());
    store->remove_edge_vis(edge);
    EXPECT_EQ(store->get_edge_vis(edge)->get_break_nodes()->GetCount(), 0);
}

TEST_F(VisualStore, NullHasNoRecordAndTakesNothing) {
    const graph_ptr<INodeImpl> null;
    EXPECT_EQ(store->get_node_vis(null).get(), nullptr);
    EXPECT_EQ(store->get_edge_vis(graph_ptr<IEdgeImpl>()).get(), nullptr);
    store->set_node_layout(null, layout);
    store->set_node_painter(null, handler);
    store->remove_node_vis(null);
    store->remove_edge_vis(graph_ptr<IEdgeImpl>());
    EXPECT_EQ(store->get_node_layout(null).get(), GetDefaultLayout().get());
    EXPECT_EQ(store->get_node_painter(null).get(), GetDefaultNodeHandler().get());
    EXPECT_EQ(store->get_node_record_count(), 0U);
}

TEST_F(VisualStore, ANodesOwnLayoutAndHandlerGoBeforeTheDefaults) {
    EXPECT_EQ(store->get_node_layout(node).get(), GetDefaultLayout().get());
    EXPECT_EQ(store->get_node_painter(node).get(), GetDefaultNodeHandler().get());
    store->set_node_layout(node, layout);
    store->set_node_painter(node, handler);
    EXPECT_EQ(store->get_node_layout(node).get(), &own_layout);
    EXPECT_EQ(store->get_node_painter(node).get(), &own_handler);
    store->remove_node_vis(node);
    EXPECT_EQ(store->get_node_layout(node).get(), GetDefaultLayout().get());
    EXPECT_EQ(store->get_node_painter(node).get(), GetDefaultNodeHandler().get());
}

// Deliberate: what a node uses is the default as it stands; only who asks for the default itself
// fills it again.
TEST_F(VisualStore, AnEmptyDefaultIsFilledOnlyWhenAskedForItself) {
    store->set_default_layout(graph_ptr2<ILayout>());
    store->set_default_node_painter(graph_ptr2<INodeHandler>());
    EXPECT_EQ(store->get_node_layout(node).get(), nullptr);
    EXPECT_EQ(store->get_node_painter(node).get(), nullptr);
    EXPECT_EQ(store->get_default_layout().get(), GetDefaultLayout().get());
    EXPECT_EQ(store->get_default_node_painter().get(), GetDefaultNodeHandler().get());
    EXPECT_EQ(store->get_node_layout(node).get(), GetDefaultLayout().get());
    EXPECT_EQ(store->get_node_painter(node).get(), GetDefaultNodeHandler().get());
    EXPECT_EQ(store->get_default_edge_painter().get(), GetDefaultEdgeHandler().get());
    store->set_default_edge_painter(graph_ptr2<IEdgeHandler>());
    EXPECT_EQ(store->get_default_edge_painter().get(), GetDefaultEdgeHandler().get());
}

TEST_F(VisualStore, TheListsKeepOrderAndRepetition) {
    const graph_ptr<INodeImpl> other = root->add_node();
    const graph_ptr<node_impl_set> list = store->get_update_list();
    store->add_to_update_list(other);
    store->add_to_update_list(node);
    store->add_to_update_list(other);
    ASSERT_EQ(list->GetCount(), 3);
    EXPECT_TRUE(list->GetItem(0) == other);
    EXPECT_TRUE(list->GetItem(1) == node);
    store->add_to_make_list(node);
    store->add_to_resize_list(node);
    store->clear_update_list();
    EXPECT_EQ(list->GetCount(), 0);
    EXPECT_EQ(store->get_make_list()->GetCount() + store->get_resize_list()->GetCount(), 2);
    store->clear_make_list();
    store->clear_resize_list();
    EXPECT_EQ(store->get_make_list()->GetCount() + store->get_resize_list()->GetCount(), 0);
}

// Layouts replace break nodes all the time: a thousand runs must not leave a thousand times the
// records behind.
TEST_F(VisualStore, RecordsOfBreakNodesThatNobodyHoldsGoAway) {
    const graph_ptr<IEdgeImpl> edge = node->link_to(node);
    const graph_ptr<IEdgeVis> route = store->get_edge_vis(edge);
    store->get_node_vis(node)->set_position({1, 2});
    for (int run = 0; run < 1000; ++run) {
        route->remove_break_nodes();
        route->add_break_nodes_in(0, 100);
        const graph_ptr<node_impl_set> bends = route->get_break_nodes();
        for (int i = 0; i < bends->GetCount(); ++i) {
            store->get_node_vis(bends->GetItem(i))->set_position({10.0 * i, 5});
        }
        ASSERT_LE(store->get_node_record_count(), 1100U);
    }
    EXPECT_EQ(store->get_node_vis(node)->get_position(), (tamsel7::point<double>{1, 2}));
    EXPECT_EQ(store->test_edge_hit(985, 0, 986, 10)->GetCount(), 1);
}

// Whoever can still ask for a record, or holds it, finds it as it was.
TEST_F(VisualStore, RecordsOfBreakNodesInReachStay) {
    const graph_ptr<IEdgeVis> route = store->get_edge_vis(node->link_to(node));
    const auto new_bend = [&] {
        route->remove_break_nodes();
        route->add_break_nodes_in(0, 1);
        return route->get_break_nodes()->GetItem(0);
    };
    const graph_ptr<INodeImpl> held = new_bend();
    store->get_node_vis(held)->set_position({1, 1});
    const graph_ptr<INodeVis> held_record = store->get_node_vis(new_bend());
    const graph_ptr<INodeImpl> with_handler = new_bend();
    store->set_node_painter(with_handler, handler);
    const graph_ptr<node_impl_set> old_route = (new_bend(), route->get_break_nodes());
    store->get_node_vis(old_route->GetItem(0))->set_position({2, 2});
    for (int i = 0; i < 5000; ++i) {
        store->get_node_vis(new_bend());
    }
    EXPECT_EQ(store->get_node_vis(held)->get_position(), (tamsel7::point<double>{1, 1}));
    EXPECT_EQ(store->get_node_vis(held_record->get_node_impl()).get(), held_record.get());
    EXPECT_EQ(store->get_node_painter(with_handler).get(), &own_handler);
    EXPECT_EQ(store->get_node_vis(old_route->GetItem(0))->get_position(),
              (tamsel7::point<double>{2, 2}));
}

// Nobody removes the record of an edge that went with its node, and an Update looks once more at
// the nodes that were in the drawing.
TEST_F(VisualStore, RecordsOfWhatWentWithItsNodeGoAway) {
    for (int round = 0; round < 3000; ++round) {
        const graph_ptr<INodeImpl> other = root->add_node();
        const graph_ptr<IEdgeImpl> edge = node->link_to(other);
        store->get_edge_vis(edge)->add_break_nodes_in(0, 4);
        store->get_node_vis(store->get_edge_vis(edge)->get_break_nodes_in(0)->GetItem(1));
        store->remove_node_vis(other);
        other->remove();
        store->get_node_vis(other)->set_position({1, 2});
        ASSERT_LE(store->get_node_record_count() + store->get_edge_record_count(), 1100U);
    }
}

// What somebody can still come to, by a handle or by a hit, is as it was.
TEST_F(VisualStore, RecordsOfRemovedEdgesInReachStay) {
    const auto link_and_remove = [&](bool asked) {
        const graph_ptr<INodeImpl> other = root->add_node();
        const graph_ptr<IEdgeImpl> edge = node->link_to(other);
        const graph_ptr<IEdgeVis> route = store->get_edge_vis(edge);
        route->add_break_nodes_in(0, 2);
        if (asked) {
            store->get_node_vis(route->get_break_nodes()->GetItem(1))->set_position({50, 50});
        }
        other->remove();
        return edge;
    };
    const graph_ptr<IEdgeImpl> held = link_and_remove(false);
    const graph_ptr<INodeImpl> bend =
        store->get_edge_vis(link_and_remove(false))->get_break_nodes_in(0)->GetItem(0);
    link_and_remove(true);
    for (int i = 0; i < 3000; ++i) {
        link_and_remove(false);
    }
    EXPECT_EQ(store->get_edge_vis(held)->get_break_nodes_in(0)->GetCount(), 2);
    const graph_ptr<IEdgeImpl> of_bend = bend->get_edges_out()->GetItem(0);
    EXPECT_EQ(store->get_edge_vis(of_bend)->get_break_nodes_in(0)->GetItem(0).get(), bend.get());
    EXPECT_EQ(store->test_edge_hit(49, 49, 51, 51)->GetCount(), 1);
}

} // namespace
