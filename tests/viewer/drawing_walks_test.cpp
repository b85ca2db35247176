#include "nurvex7/model/queries.h"
#include "nurvex7/viewer/drawing_walks.h"
#include "tests/support/placed_graph.h"
#include "tests/support/random_nest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace {

using namespace nurvex7;

std::string captions(const std::vector<Node>& nodes) {
    std::string text;
    for (const Node& node : nodes) {
        text += node.GetID() == 0 ? "root " : node.GetCaption() + " ";
    }
    return text;
}

/// True where the comparator contradicts itself over three of the nodes.
bool has_ring(const std::vector<Node>& nodes) {
    for (const Node& x : nodes) {
        for (const Node& y : nodes) {
            for (const Node& z : nodes) {
                if (NodeByOwnershipComparator(x, y) && NodeByOwnershipComparator(y, z) &&
                    NodeByOwnershipComparator(z, x)) {
                    return true;
                }
            }
        }
    }
    return false;
}

bool owns(const Node& owner, const Node& node) {
    graph_ptr<INodeImpl> above = owner_above(node.get_impl());
    while (above.get() != nullptr && above.get() != owner.get_impl().get()) {
        above = owner_above(above);
    }
    return above.get() != nullptr && !owner.IsDummy();
}

TEST(OrderOfPainting, OwnersOfHigherIdsAreDrawnForward) {
    const tests::PlacedGraph g;
    Node inner = g.add("inner");
    const Node stranger = g.add("stranger");
    Node owner = g.add("owner");
    const Node outermost = g.add("outermost");
    inner.SetOwner(owner);
    owner.SetOwner(outermost);
    std::vector<Node> nodes{g.root(), stranger, inner, owner, outermost};
    ASSERT_TRUE(has_ring(nodes));
    sort_by_ownership(nodes);
    EXPECT_EQ(captions(nodes), "outermost owner inner stranger root ");

    std::vector<Node> without_middle{inner, stranger, outermost};
    sort_by_ownership(without_middle);
    EXPECT_EQ(captions(without_middle), "outermost inner stranger ");

    std::vector<Node> twice{inner, owner, inner};
    sort_by_ownership(twice);
    EXPECT_EQ(captions(twice), "owner inner inner ");
}

TEST(OrderOfPainting, IsThatOfTheComparatorWhereThatIsOne) {
    int rings = 0;
    constexpr int seeds = 60;
    for (unsigned seed = 1; seed <= seeds; ++seed) {
        SCOPED_TRACE(seed);
        testing_support::RandomNest nest(seed);
        std::vector<Node> nodes(nest.nodes);
        for (Node& node : nodes) {
            if (const Node owner = nest.pick(); owner != node) {
                node.SetOwner(owner);
            }
        }
        std::vector<Node> some;
        for (const Node& node : nodes) {
            if (some.size() < 3 + seed % 12 && nest.below(2) == 0) {
                some.insert(some.begin() + nest.below(static_cast<unsigned>(some.size()) + 1),
                            node);
            }
        }
        const bool ring = has_ring(some);
        rings += ring ? 1 : 0;
        sort_by_ownership(some);
        for (std::size_t i = 0; i < some.size(); ++i) {
            for (std::size_t j = i + 1; j < some.size(); ++j) {
                EXPECT_FALSE(owns(some[j], some[i])) << i << " " << j;
                EXPECT_TRUE(ring || !NodeByOwnershipComparator(some[j], some[i])) << i << " " << j;
            }
        }
    }
    EXPECT_GT(rings, 0);
    EXPECT_LT(rings, seeds);
}

} // namespace
