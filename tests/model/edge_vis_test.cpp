#include "nurvex7/model/graph.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using namespace nurvex7;

// Break nodes told as "owner.place", in the order of a route.
struct BreakNodes : testing::Test {
    Node add(const Node& owner, const std::string& caption) {
        Node node = Node(owner).AddNode();
        node.SetCaption(caption);
        return node;
    }
    std::string route(const Edge& edge, const std::vector<Node>& owners) const {
        NodeSet whole = edge.GetBreakNodes();
        std::string text;
        for (int i = 0; i < whole.GetCount(); ++i) {
            text += (i > 0 ? " " : "") + place(edge, owners, whole.GetItem(i));
        }
        return text;
    }
    static std::string place(const Edge& edge, const std::vector<Node>& owners, const Node& bend) {
        for (const Node& owner : owners) {
            NodeSet run = edge.GetBreakNodesIn(owner);
            for (int i = 0; i < run.GetCount(); ++i) {
                if (run.GetItem(i) == bend) {
                    return (owner.GetID() == 0 ? "root" : owner.GetCaption()) + "." +
                           std::to_string(i);
                }
            }
        }
        return "nowhere";
    }

    std::unique_ptr<Graph> graph = std::make_unique<Graph>();
    Node root = graph->GetRoot();
};

TEST_F(BreakNodes, KnowTheirEdgeAndBearFlagsAlone) {
    Edge edge = add(root, "a").LinkTo(add(root, "b"));
    edge.AddBreakNodesIn(root, 1);
    edge.AddBreakNodesIn(root, 1);
    EXPECT_EQ(route(edge, {root}), "root.0 root.1");
    Node bend = edge.GetBreakNodesIn(root).GetItem(0);
    EXPECT_EQ(edge.GetBreakNodesIn(root).GetItem(1).GetID(), bend.GetID() - 1);
    EXPECT_LT(bend.GetID(), 0);
    EXPECT_TRUE(bend.GetEdgesIn().GetItem(0) == edge);
    EXPECT_TRUE(bend.GetEdgesOut().GetItem(0) == edge);
    EXPECT_EQ(bend.GetEdgesOut().GetCount(), 1);
    bend.SetCaption("x");
    bend.SetTag(3);
    bend.SetCondition(8);
    bend.SetOwner(root);
    bend.Remove();
    EXPECT_EQ(bend.GetCaption(), "");
    EXPECT_EQ(bend.GetTag(), 0);
    EXPECT_EQ(bend.GetCondition(), 8);
    EXPECT_TRUE(bend.IsDummy());
    EXPECT_EQ(bend.AddNode().get_impl().get(), nullptr);
    EXPECT_EQ(bend.LinkTo(edge.From()).get_impl().get(), nullptr);
    EXPECT_EQ(bend.GetChildren().GetCount() + bend.GetParents().GetCount(), 0);
    EXPECT_EQ(bend.GetOwned().GetCount(), 0);
}

TEST_F(BreakNodes, ARouteThatDidNotChangeIsTheSameSet) {
    const Edge edge = add(root, "a").LinkTo(add(root, "b"));
    const graph_ptr<IEdgeVis> record = root.get_vis()->get_edge_vis(edge.get_impl());
    record->add_break_nodes_in(0, 2);
    const graph_ptr<node_impl_set> route = record->get_break_nodes();
    record->add_break_nodes_in(0, 0);
    record->add_break_nodes_in(0, -1);
    EXPECT_EQ(record->get_break_nodes_in(77)->GetCount(), 0) << "enters an empty run";
    EXPECT_EQ(record->get_break_nodes().get(), route.get());
    record->add_break_nodes_in(0, 1);
    EXPECT_NE(record->get_break_nodes().get(), route.get());
    EXPECT_EQ(route->GetCount(), 2) << "who walks the old route keeps it whole";
    record->remove_break_nodes_in(0);
    EXPECT_EQ(record->get_break_nodes()->GetCount(), 0);
    record->add_break_nodes_in(0, 1);
    EXPECT_EQ(record->get_break_nodes()->GetCount(), 1);
    record->remove_break_nodes();
    EXPECT_EQ(record->get_break_nodes()->GetCount(), 0);
}

// Outward from the source as far as the outermost owner with a run, then inward to the target.
TEST_F(BreakNodes, ARouteGoesOutwardAndInward) {
    const Node p = add(root, "p");
    const Node q = add(p, "q");
    const Node r = add(root, "r");
    const Node s = add(r, "s");
    const Node from = add(q, "from");
    const Node to = add(s, "to");
    const std::vector<Node> owners = {root, p, q, r, s};
    struct {
        const char* name;
        Node source;
        Node target;
        std::vector<Node> runs;
        const char* route;
    } const cases[] = {
        {"no runs", from, to, {}, ""},
        {"across two nests", from, to, {r, q, root, s, p}, "q.0 p.0 root.0 r.0 s.0"},
        {"and back", to, from, {r, q, root, s, p}, "s.0 r.0 root.0 p.0 q.0"},
        {"within one owner", from, add(q, "beside"), {q}, "q.0"},
        {"out of one owner and back into it", from, add(q, "beside"), {q, p}, "q.0 p.0 q.0"},
        {"runs of the target alone", from, to, {r, s, root}, "root.0 r.0 s.0"},
        {"without the common owner", from, to, {q, s, r}, "q.0 r.0 s.0"},
        {"from an owner to its inside", p, from, {q, p, root}, "root.0 p.0 q.0"},
        {"without runs at the source its own owner ends the way", add(p, "x"), from, {q}, "q.0"},
    };
    for (const auto& c : cases) {
        Edge edge = Node(c.source).LinkTo(c.target);
        for (const Node& owner : c.runs) {
            edge.AddBreakNodesIn(owner, 1);
        }
        EXPECT_EQ(route(edge, owners), c.route) << c.name;
        edge.Remove();
    }
}

TEST_F(BreakNodes, ALongNestIsWalkedWithoutGoingDeep) {
    std::vector<Node> owners = {root};
    for (int depth = 0; depth < 3000; ++depth) {
        owners.push_back(owners.back().AddNode());
    }
    Edge edge = add(root, "from").LinkTo(owners.back().AddNode());
    for (const Node& owner : owners) {
        edge.AddBreakNodesIn(owner, 1);
    }
    NodeSet whole = edge.GetBreakNodes();
    ASSERT_EQ(whole.GetCount(), 3001);
    EXPECT_TRUE(whole.GetItem(0) == edge.GetBreakNodesIn(root).GetItem(0));
    EXPECT_TRUE(whole.GetItem(3000) == edge.GetBreakNodesIn(owners.back()).GetItem(0));
}

TEST_F(BreakNodes, AnEdgeWithADeletedEndKeepsTheRunsAtTheOther) {
    const Node p = add(root, "p");
    Node a = add(root, "a");
    Edge edge = a.LinkTo(add(p, "b"));
    edge.AddBreakNodesIn(p, 1);
    edge.AddBreakNodesIn(root, 1);
    EXPECT_EQ(route(edge, {root, p}), "root.0 p.0");
    a.Remove();
    edge.AddBreakNodesIn(p, 1);
    EXPECT_EQ(route(edge, {root, p}), "root.0 p.0 p.1");
    edge.Remove();
    edge.AddBreakNodesIn(p, 1);
    EXPECT_EQ(edge.GetBreakNodes().GetCount(), 0) << "a removed edge has no route at all";
}

TEST_F(BreakNodes, ANodeThatOwnsItselfDoesNotHangARoute) {
    Node a = add(root, "a");
    const Node inside = add(a, "inside");
    Edge out = Node(inside).LinkTo(add(root, "b"));
    Edge in = add(root, "c").LinkTo(inside);
    a.SetOwner(a);
    out.AddBreakNodesIn(a, 1);
    in.AddBreakNodesIn(a, 1);
    EXPECT_EQ(route(out, {root, a}), "a.0");
    EXPECT_EQ(route(in, {root, a}), "a.0");
    a.Remove();
}

// A break node, or its record, can be all that somebody keeps of a run, beyond the route and the
// edge; of a piece that was appended too.
TEST_F(BreakNodes, AndTheirRecordsKeepWhatTheyNeed) {
    Edge edge = add(root, "a").LinkTo(add(root, "b"));
    edge.AddBreakNodesIn(root, 1);
    edge.AddBreakNodesIn(root, 2);
    NodeSet run = edge.GetBreakNodesIn(root);
    const graph_ptr<INodeImpl> bend = run.GetItem(0).get_impl();
    const int id = run.GetItem(1).GetID();
    const graph_ptr<INodeVis> record = root.get_vis()->get_node_vis(run.GetItem(1).get_impl());
    run.GetItem(0).SetPosition(1, 2);
    run.GetItem(1).SetPosition(0, 1);
    EXPECT_EQ(record->get_position(), (tamsel7::point<double>{0, 1}));
    record->set_position({3, 4});
    EXPECT_EQ(run.GetItem(1).GetPosition(), (tamsel7::point<double>{3, 4}));
    run = root.GetOwned();
    edge.Remove();
    EXPECT_EQ(Node(root.get_vis(), bend).GetPosition(), (tamsel7::point<double>{1, 2}));
    EXPECT_EQ(record->get_node_impl()->get_id(), id);
    EXPECT_EQ(root.get_vis()->get_node_vis(record->get_node_impl()).get(), record.get());
    root.get_vis()->remove_node_vis(record->get_node_impl());
    EXPECT_EQ(root.get_vis()->get_node_vis(record->get_node_impl())->get_position(),
              tamsel7::point<double>());
    EXPECT_EQ(record->get_position(), (tamsel7::point<double>{3, 4}));
}

TEST_F(BreakNodes, BeyondTheirStoreAreThoseOfNobody) {
    graph_ptr<INodeImpl> bend;
    graph_ptr<INodeVis> record;
    {
        Graph gone;
        const Node gone_root = gone.GetRoot();
        Edge edge = add(gone_root, "a").LinkTo(add(gone_root, "b"));
        edge.AddBreakNodesIn(gone_root, 2);
        bend = edge.GetBreakNodesIn(gone_root).GetItem(0).get_impl();
        record = gone_root.get_vis()->get_node_vis(bend);
        record->set_position({1, 2});
    }
    EXPECT_EQ(Node(root.get_vis(), bend).GetPosition(), tamsel7::point<double>());
    EXPECT_EQ(record->get_position(), (tamsel7::point<double>{1, 2}));
    EXPECT_TRUE(record->get_node_impl() == bend);
}

} // namespace
