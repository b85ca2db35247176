// What every drawing keeps to, on random graphs: things that one can see in it at a glance.
#include "tests/support/layout_probe.h"
#include "tests/support/plain_queries.h"
#include "tests/support/random_graph.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace nurvex7;
using namespace nurvex7::testing_support;

using levels_t = std::vector<std::vector<Node>>;

void expect_permuted(const levels_t& before, const levels_t& after) {
    ASSERT_EQ(after.size(), before.size());
    EXPECT_EQ(after.front(), before.front());
    EXPECT_EQ(after.back(), before.back());
    for (std::size_t k = 0; k < before.size(); ++k) {
        EXPECT_TRUE(std::is_permutation(before[k].begin(), before[k].end(), after[k].begin(),
                                        after[k].end()))
            << "level " << k;
    }
}

void expect_apart(LayoutProbe& probe) {
    double left = 0;
    for (std::size_t k = 1; k + 1 < probe.level_nodes().size(); ++k) {
        EXPECT_GE(probe.column(k).x_start, left);
        left = probe.column(k).x_end;
        double bottom = -1e9;
        for (const Node& node : probe.level_nodes()[k]) {
            EXPECT_GE(node.GetPosition().y, bottom) << "level " << k;
            bottom = node.GetPosition().y + (node.IsDummy() ? 0 : node.GetSize().height);
        }
    }
}

/// An edge leaves on the right of its source and enters on the left of its target.
void expect_ends_at_its_nodes(const Edge& edge) {
    const Node from = edge.From();
    NodeSet route = edge.GetBreakNodes();
    if (route.GetCount() > 0 && from.GetOwner() == edge.To().GetOwner()) {
        EXPECT_DOUBLE_EQ(route.GetItem(0).GetPosition().x,
                         from.GetPosition().x + from.GetSize().width);
        EXPECT_DOUBLE_EQ(route.GetItem(route.GetCount() - 1).GetPosition().x,
                         edge.To().GetPosition().x);
    }
}

TEST(Drawings, OfRandomGraphsAreOrderly) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        TestGraph g;
        grow(g, seed, shape_of_seed(seed, 40));
        LayoutProbe probe(g);
        probe.make_up_to("place_nodes_on_levels");
        const levels_t placed = probe.level_nodes();
        probe.barycentric_adjust();
        expect_permuted(placed, probe.level_nodes());
        probe.calculate_initial_y_coords();
        const levels_t ordered = probe.level_nodes();
        probe.force_adjust();
        EXPECT_EQ(probe.level_nodes(), ordered);
        probe.calculate_x_coords();
        expect_apart(probe);
        for (const Edge& edge : g.edges()) {
            if (!hidden(edge.From()) && !hidden(edge.To())) {
                expect_ends_at_its_nodes(edge);
            }
        }
    }
}

} // namespace
