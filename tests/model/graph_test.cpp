#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/model/graph.h"
#include "nurvex7/model/structure_index.h"
#include "nurvex7/presentation/dummy_edge_handler.h"

#include <gtest/gtest.h>

namespace {

using namespace nurvex7;

TEST(Graph, QueuesItsRootWhateverKindItIsOf) {
    struct named_root : DefaultRootNodeImpl {
        std::string get_caption() const override { return "top"; }
    };
    const Graph graph(new DefaultStorage(new named_root));
    Node root = graph.GetRoot();
    EXPECT_EQ(root.GetCaption(), "top");
    EXPECT_TRUE(root.AddNode().GetOwner() == root);
    const auto queued = root.get_vis()->get_make_list();
    ASSERT_EQ(queued->GetCount(), 1);
    EXPECT_TRUE(queued->GetItem(0) == 0);
}

TEST(Graph, AnotherStorageKeepsRecordsAndQueues) {
    Graph graph;
    const graph_ptr<INodeImpl> old_root = graph.GetRoot().get_impl();
    Node a = graph.GetRoot().AddNode();
    a.SetSize({6, 2});
    graph.SetStorage(new DefaultStorage(new DefaultRootNodeImpl));
    EXPECT_EQ(graph.GetRoot().GetOwned().GetCount(), 0);
    EXPECT_EQ(a.GetSize().width, 6);
    const auto queued = a.get_vis()->get_make_list();
    ASSERT_EQ(queued->GetCount(), 1);
    EXPECT_EQ(queued->GetItem(0).get(), old_root.get());
    old_root->remove();
}

TEST(Graph, DeletesItsContentAtTheEnd) {
    graph_ptr<IGraphStorage> storage(new DefaultStorage(new DefaultRootNodeImpl));
    graph_ptr<INodeImpl> inner;
    {
        const Graph graph(storage);
        inner = graph.GetRoot().AddNode().AddNode().get_impl();
    }
    EXPECT_EQ(inner->get_owner().get(), nullptr);
    EXPECT_EQ(inner->ref_count, 1);
    EXPECT_EQ(storage->get_root()->get_owned()->GetCount(), 0);
    EXPECT_EQ(storage->ref_count, 1);
}

TEST(Graph, LetsGoOfALayoutThatRemembersItsNodes) {
    struct told_layout : IncLayout {
        explicit told_layout(bool& told_) : told(told_) {}
        ~told_layout() override { told = true; }
        bool& told;
    };
    bool gone = false;
    {
        Graph graph;
        graph.SetDefaultLayout(graph_ptr2<ILayout>(new told_layout(gone), /*owns=*/true));
        Node a = graph.GetRoot().AddNode();
        a.LinkTo(graph.GetRoot().AddNode());
        graph.RecalculateLayout(nullptr);
        EXPECT_FALSE(gone);
    }
    EXPECT_TRUE(gone);
}

TEST(Graph, HoldsItselfByNoRootThatWasTakenFromIt) {
    struct told_handler : DummyEdgeHandler {
        explicit told_handler(int& told_) : told(told_) {}
        ~told_handler() override { ++told; }
        int& told;
    };
    int gone = 0;
    for (const bool by_storage : {false, true}) {
        graph_ptr<IGraphStorage> storage(new DefaultStorage(new DefaultRootNodeImpl));
        const graph_ptr<INodeImpl> old_root = storage->get_root();
        {
            Graph graph(storage);
            graph.SetDefaultLayout(graph_ptr2<ILayout>(new IncLayout, /*owns=*/true));
            graph.SetDefaultEdgeHandler(
                graph_ptr2<IEdgeHandler>(new told_handler(gone), /*owns=*/true));
            Node a = graph.GetRoot().AddNode();
            a.LinkTo(graph.GetRoot().AddNode());
            graph.RecalculateLayout(nullptr);
            ASSERT_NE(StructureIndex::FindKept(graph.GetRoot()), nullptr);
            by_storage ? storage->remove_root()
                       : graph.SetStorage(new DefaultStorage(new DefaultRootNodeImpl));
        }
        EXPECT_EQ(gone, by_storage ? 2 : 1);
        EXPECT_EQ(old_root->get_owned()->GetCount(), 2);
        old_root->remove();
    }
}

TEST(Graph, EndsInPeaceWhenItsRootWasTakenAway) {
    graph_ptr<IGraphStorage> storage(new DefaultStorage(new DefaultRootNodeImpl));
    {
        const Graph graph(storage);
        storage->remove_root();
    }
    EXPECT_EQ(storage->get_root().get(), nullptr);
}

TEST(Graph, HandsTheDefaultsToItsNodes) {
    struct quiet_layout : ILayout {
        void Make(Node) override {}
        void Update(Node) override {}
        void Resize(Node) override {}
    };
    Graph graph;
    const Graph other;
    graph.SetDefaultLayout(graph_ptr2<ILayout>(new quiet_layout, /*owns=*/true));
    EXPECT_NE(graph.GetRoot().GetLayout().get(), GetDefaultLayout().get());
    EXPECT_EQ(other.GetRoot().GetLayout().get(), GetDefaultLayout().get());
    EXPECT_EQ(graph.GetRoot().GetHandler().get(), GetDefaultNodeHandler().get());
    graph.SetDefaultNodeHandler(graph_ptr2<INodeHandler>());
    EXPECT_EQ(graph.GetRoot().GetHandler().get(), nullptr);
    EXPECT_EQ(graph.GetDefaultNodeHandler().get(), GetDefaultNodeHandler().get());
}

} // namespace
