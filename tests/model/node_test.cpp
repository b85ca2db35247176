#include "nurvex7/model/graph.h"
#include "nurvex7/model/node.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace nurvex7;

struct Handles : testing::Test {
    static std::string captions(NodeSet nodes) {
        std::string text;
        for (int i = 0; i < nodes.GetCount(); ++i) {
            text += (i > 0 ? " " : "") + nodes.GetItem(i).GetCaption();
        }
        return text;
    }
    Node add(Node owner, const std::string& caption) {
        Node node = owner.AddNode();
        node.SetCaption(caption);
        return node;
    }

    Graph graph;
    Node root = graph.GetRoot();
};

// Deliberate: equal ids are not assigned. The roots of two graphs share the id 0.
TEST_F(Handles, AssignmentBetweenEqualIdsKeepsTheOldPointers) {
    const Graph other;
    Node handle = root;
    handle = other.GetRoot();
    EXPECT_EQ(handle.get_vis().get(), root.get_vis().get());
    EXPECT_EQ(handle.get_impl().get(), root.get_impl().get());
    handle = add(root, "a");
    EXPECT_EQ(handle.GetCaption(), "a");
    handle = other.GetRoot();
    EXPECT_EQ(handle.get_vis().get(), other.GetRoot().get_vis().get());
}

TEST_F(Handles, SetsAreLiveViews) {
    NodeSet owned = root.GetOwned();
    Node a = add(root, "a");
    const Node b = add(root, "b");
    EdgeSet out = a.GetEdgesOut();
    Edge edge = a.LinkTo(b);
    EXPECT_TRUE(out.GetItem(0) == edge);
    EXPECT_TRUE(edge.From() == a && edge.To() == b);
    EXPECT_EQ(captions(a.GetChildren()) + captions(b.GetParents()), "ba");
    edge.Remove();
    EXPECT_EQ(out.GetCount(), 0);
    a.Remove();
    EXPECT_EQ(captions(owned), "b");
    EXPECT_EQ(root.GetOwner().get_impl().get(), nullptr);
    EXPECT_EQ(root.LinkTo(b).get_impl().get(), nullptr);
}

TEST_F(Handles, AKeptHandleOfARemovedNodeMakesAFreshRecord) {
    struct quiet_handler : INodeHandler {
        void Draw(Node, tamsel7::IPainter*) override {}
        tamsel7::size<double> GetSize(Node) override { return {}; }
        SizeAndOrigin GetSize(Node, tamsel7::size<double>) override { return {}; }
    };
    Node a = add(root, "a");
    const graph_ptr2<INodeHandler> handler(new quiet_handler, /*owns=*/true);
    a.SetHandler(handler);
    a.SetSize({60, 20});
    a.SetPosition(1, 2);
    EXPECT_EQ(a.GetHandler().get(), handler.get());
    a.Remove();
    EXPECT_TRUE(a.IsDummy());
    EXPECT_EQ(a.GetHandler().get(), graph.GetDefaultNodeHandler().get());
    EXPECT_EQ(a.GetSize(), tamsel7::size<double>());
    EXPECT_EQ(a.GetPosition(), tamsel7::point<double>());
}

TEST_F(Handles, AllEdgesShareTheHandlerOfTheGraph) {
    struct quiet_handler : IEdgeHandler {
        void Draw(Edge, tamsel7::IPainter*) override {}
        double GetWidth(Edge) const override { return 1; }
    };
    Node a = add(root, "a");
    const Edge first = a.LinkTo(a);
    const Edge second = a.LinkTo(a);
    EXPECT_EQ(first.GetHandler().get(), GetDefaultEdgeHandler().get());
    const graph_ptr2<IEdgeHandler> handler(new quiet_handler, /*owns=*/true);
    graph.SetDefaultEdgeHandler(handler);
    EXPECT_EQ(first.GetHandler().get(), handler.get());
    EXPECT_EQ(second.GetHandler().get(), handler.get());
}

TEST_F(Handles, OnlyRequestsForLayoutsQueue) {
    const Graph fresh;
    Node top = fresh.GetRoot();
    IGraphVis& store = *top.get_vis();
    store.clear_make_list();
    Node a = add(top, "a");
    Node b = add(top, "b");
    a.LinkTo(b).Remove();
    b.SetOwner(a);
    b.SetPosition(1, 1);
    b.SetSize({1, 1});
    b.SetCondition(1);
    b.Remove();
    EXPECT_EQ(store.get_make_list()->GetCount() + store.get_update_list()->GetCount() +
                  store.get_resize_list()->GetCount(),
              0);
    a.MakeLayout();
    a.UpdateLayout();
    a.ResizeSelf();
    EXPECT_TRUE(store.get_make_list()->GetItem(0) == a.get_impl());
    EXPECT_TRUE(store.get_update_list()->GetItem(0) == a.get_impl());
    EXPECT_TRUE(store.get_resize_list()->GetItem(0) == a.get_impl());
}

TEST_F(Handles, ResizeAllQueuesOwnersBeforeWhatTheyOwn) {
    const Node a = add(root, "a");
    const Node b = add(root, "b");
    add(a, "c");
    Node deep = add(a, "d");
    add(b, "e");
    root.ResizeAll();
    const auto list = root.get_vis()->get_resize_list();
    EXPECT_EQ(captions(NodeSet(root.get_vis(), list)), " a c d b e");
    for (int depth = 0; depth < 50'000; ++depth) {
        deep = deep.AddNode();
    }
    _apply_resize_all(root);
    EXPECT_EQ(list->GetCount(), 6 + 50'006);
}

TEST_F(Handles, AHandleOutlivesItsGraph) {
    auto* const short_lived = new Graph;
    Node a = add(short_lived->GetRoot(), "a");
    const Node gone_root = short_lived->GetRoot();
    const Edge loop = a.LinkTo(a);
    loop.GetBreakNodes();
    delete short_lived;
    EXPECT_EQ(a.GetCaption(), "a");
    EXPECT_TRUE(a.IsDummy());
    EXPECT_EQ(loop.From().get_impl().get(), nullptr);
    EXPECT_EQ(gone_root.GetOwned().GetCount(), 0);
    a.SetPosition(1, 1);
    EXPECT_EQ(a.GetPosition().x, 1);
}

} // namespace
