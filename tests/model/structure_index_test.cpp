#include "nurvex7/model/queries.h"
#include "nurvex7/model/structure_index.h"
#include "tests/support/random_nest.h"
#include "tests/support/test_graph.h"

#include <gtest/gtest.h>

#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace nurvex7 {
namespace {

using testing_support::RandomNest;
using testing_support::TestGraph;
using id_pairs = std::vector<std::pair<int, int>>;

id_pairs ids_of(const StructureIndex::Pairs& pairs) {
    id_pairs ids;
    for (const StructureIndex::Pair& pair : pairs) {
        ids.emplace_back(pair.node.GetID(), pair.edge.GetID());
    }
    return ids;
}

id_pairs ids_of(const graph_ptr2<IGraphSet<NodeEdgePair>>& pairs) {
    id_pairs ids;
    for (int i = 0; i < pairs->GetCount(); ++i) {
        ids.emplace_back(pairs->GetItem(i).node.GetID(), pairs->GetItem(i).edge.GetID());
    }
    return ids;
}

id_pairs ids_of(const StructureIndex& index, std::span<const StructureIndex::Link> links) {
    id_pairs ids;
    for (const StructureIndex::Link& link : links) {
        ids.emplace_back(index.NodeAt(link.node).GetID(), index.EdgeAt(link.edge).GetID());
    }
    return ids;
}

void expect_the_plain_answers(const StructureIndex& index) {
    for (std::size_t i = 1; i < index.GetNodes().size(); ++i) {
        const Node& node = index.GetNodes()[i];
        SCOPED_TRACE(node.GetID());
        ASSERT_EQ(ids_of(index.Children(node)), ids_of(GetChildrenEx(node)));
        ASSERT_EQ(ids_of(index.Parents(node)), ids_of(GetParentsEx(node)));
        const int place = index.FindPlace(node);
        ASSERT_EQ(ids_of(index, index.ChildLinks(place)), ids_of(index.Children(node)));
        ASSERT_EQ(ids_of(index, index.ParentLinks(place)), ids_of(index.Parents(node)));
        ASSERT_EQ(ids_of(index.EdgesOut(node)), ids_of(GetEdgesOutEx(node)));
        ASSERT_EQ(ids_of(index.EdgesIn(node)), ids_of(GetEdgesInEx(node)));
    }
}

TEST(StructureIndex, GivesThePlainAnswersOfRandomNests) {
    for (unsigned seed = 0; seed < 600; ++seed) {
        SCOPED_TRACE(seed);
        RandomNest nest(seed);
        expect_the_plain_answers(StructureIndex(nest.graph->GetRoot()));
        for (int i = 0; i < 4; ++i) {
            expect_the_plain_answers(StructureIndex(nest.pick()));
        }
        ASSERT_FALSE(HasFailure());
    }
}

TEST(StructureIndex, CoversTheOwnerAndItsInsideAndAnswersEmptyElsewhere) {
    graph_ptr2<Graph> graph(new Graph, true);
    graph_ptr2<Graph> other_graph(new Graph, true);
    Node owner = graph->GetRoot().AddNode();
    Node inner = owner.AddNode();
    Node beside = graph->GetRoot().AddNode();
    inner.LinkTo(beside);
    owner.LinkTo(beside);
    const StructureIndex index(owner);
    EXPECT_EQ(index.GetCount(), 1U);
    EXPECT_TRUE(index.Covers(owner));
    EXPECT_TRUE(index.Covers(inner));
    EXPECT_FALSE(index.Covers(beside));
    EXPECT_FALSE(index.Covers(graph->GetRoot().GetOwner()));
    EXPECT_EQ(index.EdgesOut(inner).size(), 1U);
    EXPECT_TRUE(index.Children(owner).empty());
    EXPECT_TRUE(index.Parents(beside).empty());
    EXPECT_FALSE(StructureIndex(graph->GetRoot()).Covers(other_graph->GetRoot()));
}

TEST(StructureIndex, AnswersWhoeverNumbersTheNodesBesides) {
    RandomNest nest(7);
    const StructureIndex outer(nest.graph->GetRoot());
    const StructureIndex inner(nest.pick()); // leaves its own notes on the nodes
    for (const Node& node : outer.GetNodes()) {
        node.get_impl()->place += node.GetID() % 3;
    }
    expect_the_plain_answers(outer);
    expect_the_plain_answers(inner);
}

TEST(StructureIndex, AnswersAsTheQueriesDoAtTheEdgesOfAGraph) {
    graph_ptr2<Graph> graph(new Graph, true);
    graph_ptr2<Graph> other_graph(new Graph, true);
    Node owner = graph->GetRoot().AddNode();
    Node inner = owner.AddNode();
    Node stranger = other_graph->GetRoot().AddNode().AddNode();
    inner.LinkTo(stranger);
    stranger.LinkTo(owner);
    expect_the_plain_answers(StructureIndex(graph->GetRoot()));
    expect_the_plain_answers(StructureIndex(owner));
    owner.SetOwner(owner); // belongs to nothing now
    const StructureIndex island(owner);
    EXPECT_EQ(island.GetCount(), 1U);
    EXPECT_TRUE(island.EdgesOut(inner).empty());
    expect_the_plain_answers(island);
    expect_the_plain_answers(StructureIndex(graph->GetRoot()));
    owner.Remove();
}

/// Changes a nest, or the other graph that it may be joined with, in one of the ways that there
/// are. Gives whether something has only been added to it.
bool change(RandomNest& nest, std::vector<Node>& others, const Node& other_root) {
    const bool beside = nest.below(20) == 0;
    const std::vector<Node> ends{nest.pick(), beside ? others[nest.below(2)] : nest.pick()};
    Node node = ends[nest.below(2)];
    switch (nest.below(12)) {
    case 0: {
        const Node owner = beside ? other_root : nest.pick();
        Node moved = beside ? others[0] : node;
        if (moved != owner) { // or it would hold itself
            moved.SetOwner(owner);
        }
        return false;
    }
    case 1:
        if (!IsRoot(node)) {
            others[nest.below(2)] = node; // a removed node can be linked, and come back
            node.Remove();
            std::erase_if(nest.nodes, [](const Node& n) { return n.IsDummy(); });
        }
        return false;
    case 2: {
        Edge edge = nest.edges[nest.below(static_cast<unsigned>(nest.edges.size()))];
        if (edge.get_impl()->from().get() != nullptr) {
            edge.Remove();
        }
        return false;
    }
    case 3:
    case 4:
    case 5:
        nest.nodes.push_back(node.IsDummy() ? nest.graph->GetRoot().AddNode() : node.AddNode());
        return true;
    default:
        if (!IsRoot(ends[0]) && !IsRoot(ends[1])) {
            nest.edges.push_back(Node(ends[0]).LinkTo(ends[1]));
        }
        return !beside;
    }
}

TEST(StructureIndex, KeptAnswersFollowEveryChange) {
    int kept_on = 0;
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(seed);
        RandomNest nest(seed);
        graph_ptr2<Graph> other_graph(new Graph, true);
        std::vector<Node> others;
        for (int i = 0; i < 2; ++i) {
            others.push_back(other_graph->GetRoot().AddNode());
        }
        std::shared_ptr<const StructureIndex> at_work;
        const StructureIndex* before = nullptr;
        for (int step = 0; step < 25; ++step) {
            SCOPED_TRACE(step);
            bool only_added = true;
            for (unsigned i = nest.below(4); i > 0; --i) {
                only_added = change(nest, others, other_graph->GetRoot()) && only_added;
            }
            const std::size_t count = at_work != nullptr ? at_work->GetCount() : 0;
            const auto kept = StructureIndex::For(nest.graph->GetRoot());
            ASSERT_EQ(at_work != nullptr ? at_work->GetCount() : 0, count) << "somebody is at work";
            at_work = step % 5 == 0 ? kept : nullptr;
            expect_the_plain_answers(*kept);
            const StructureIndex anew(nest.graph->GetRoot());
            ASSERT_EQ(kept->GetNodes().size(), anew.GetNodes().size());
            ASSERT_EQ(kept->IsTwoWay(), anew.IsTwoWay());
            kept_on += only_added && kept.get() == before ? 1 : 0;
            before = StructureIndex::FindKept(nest.graph->GetRoot()).get();
            StructureIndex::For(other_graph->GetRoot());
            ASSERT_FALSE(HasFailure());
        }
        for (Edge& edge : nest.edges) { // those that a removed node was given hold it
            if (edge.get_impl()->from().get() != nullptr) {
                edge.Remove();
            }
        }
    }
    EXPECT_GT(kept_on, 800) << "hardly anything was kept";
}

/// Changes what is new inside a fresh owner: nodes, edges and removals that nobody is told of.
void change_what_is_new(RandomNest& nest, std::vector<Node>& fresh) {
    const auto pick = [&] { return fresh[nest.below(static_cast<unsigned>(fresh.size()))]; };
    Node node = pick();
    switch (nest.below(6)) {
    case 0:
    case 1:
        fresh.push_back(node.AddNode());
        return;
    case 2:
        if (node != fresh.front()) { // or the root would be told
            node.Remove();
            std::erase_if(fresh, [](const Node& n) { return n.IsDummy(); });
        }
        return;
    default:
        nest.edges.push_back(node.LinkTo(pick()));
    }
}

TEST(StructureIndex, KeptAnswersFollowRemovalsAmongWhatIsNew) {
    int kept_on = 0;
    int one_way = 0;
    for (unsigned seed = 0; seed < 400; ++seed) {
        SCOPED_TRACE(seed);
        RandomNest nest(seed);
        graph_ptr2<Graph> other_graph(new Graph, true);
        const Node root = nest.graph->GetRoot();
        Node old = nest.graph->GetRoot().AddNode();
        Node moved = other_graph->GetRoot().AddNode();
        if (seed % 2 == 0) { // the end that moves in knows an edge that the old end has lost
            Node lost = other_graph->GetRoot().AddNode();
            old.LinkTo(lost);
            nest.edges.push_back(old.LinkTo(moved));
            lost.Remove();
        }
        const auto* const before = StructureIndex::For(root).get();
        std::vector<Node> fresh{nest.graph->GetRoot().AddNode()};
        for (int i = 0; i < 12; ++i) {
            change_what_is_new(nest, fresh);
        }
        if (seed % 4 < 2) {
            moved.SetOwner(fresh.front());
        }
        const auto kept = StructureIndex::For(root);
        expect_the_plain_answers(*kept);
        const StructureIndex anew(root);
        ASSERT_EQ(kept->GetNodes().size(), anew.GetNodes().size());
        ASSERT_EQ(kept->IsTwoWay(), anew.IsTwoWay());
        ASSERT_FALSE(HasFailure());
        kept_on += kept.get() == before ? 1 : 0;
        one_way += anew.IsTwoWay() ? 0 : 1;
        for (Edge& edge : nest.edges) {
            if (edge.get_impl()->from().get() != nullptr) {
                edge.Remove();
            }
        }
    }
    EXPECT_GT(kept_on, 80);
    EXPECT_GT(one_way, 80);
}

// The inside of a node that was deleted in place is nobody's, and neither is what it is given then.
TEST(StructureIndex, PassesOverWhatIsDeletedAndStillStandsInItsOwner) {
    TestGraph g("C/a>C/b C/b>c D/d");
    g.make();
    for (const char* const name : {"a", "d", "D", "c"}) {
        Node gone = g.node(name);
        Node owner = gone.GetOwner();
        const int owned = owner.GetOwned().GetCount();
        _delete_node(gone.get_impl());
        EXPECT_EQ(owner.GetOwned().GetCount(), owned);
        Node inside = gone.AddNode();
        inside.LinkTo(gone);
        g.node("b").LinkTo(inside);
        owner.UpdateLayout();
        g.recalculate();
        const StructureIndex index(g.root());
        EXPECT_FALSE(index.Covers(gone));
        EXPECT_FALSE(index.Covers(inside));
        EXPECT_TRUE(index.Children(gone).empty());
        EXPECT_TRUE(index.Children(g.node("b")).empty());
        g.make();
    }
}

// Every owner has an edge beside it. Queries that walk their inside would visit a hundred million
// nodes here.
TEST(StructureIndex, TenThousandOwnersInsideEachOther) {
    graph_ptr2<Graph> graph(new Graph, true);
    constexpr int DEPTH = 10'000;
    std::vector<Node> owners{graph->GetRoot()};
    for (int i = 0; i < DEPTH; ++i) {
        Node leaf = owners.back().AddNode();
        owners.push_back(owners.back().AddNode());
        owners.back().LinkTo(leaf);
    }
    const StructureIndex index(graph->GetRoot());
    EXPECT_EQ(index.GetCount(), 2U * DEPTH);
    EXPECT_EQ(index.Children(owners[1]).size(), 1U);
    EXPECT_EQ(index.Children(owners[DEPTH]).size(), 1U);
    EXPECT_TRUE(index.EdgesOut(owners[DEPTH]).empty());
}

} // namespace
} // namespace nurvex7
