#include "nurvex7/model/queries.h"
#include "nurvex7/model/structure_index.h"
#include "tests/support/random_nest.h"

#include <gtest/gtest.h>

#include <span>
#include <utility>
#include <vector>

namespace nurvex7 {
namespace {

using testing_support::RandomNest;
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
