#include "tests/support/layout_probe.h"
#include "tests/support/random_graph.h"
#include "tests/support/scenario.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace nurvex7;
using namespace nurvex7::testing_support;

class Orders : public testing::TestWithParam<Scenario> {};

TEST_P(Orders, AfterThreeSweeps) {
    TestGraph g(GetParam().words);
    LayoutProbe probe(g);
    probe.make_up_to("barycentric_adjust");
    EXPECT_EQ(probe.levels(), GetParam().picture);
}

INSTANTIATE_TEST_SUITE_P(
    Make, Orders,
    testing::Values(Scenario{"two edges that cross are uncrossed", "a b c d a>d b>c", "a b | d c"},
                    Scenario{"equal keys keep their order", "a d c b a>c a>d a>b", "a | d c b"},
                    Scenario{"a single level is not sorted", "c a b", "c a b"},
                    Scenario{"parallel edges weigh twice", "a b c y x b>y a>x a>x c>x",
                             "a c b | x y"},
                    Scenario{"a node without neighbours stays near its old place",
                             "a b c x y z a>x b>y b>z n", "a b c n | x y z"},
                    Scenario{"a dummy is sorted like a real node", "a b p q z b>q a>p q>z p>z a>z",
                             "a b | a>z p q | z"},
                    Scenario{"a loop counts for nothing", "a b c d a>d b>c c>c", "a b | d c"}),
    RowName());

TEST(BarycentricAdjust, PortsInfluenceNoOrder) {
    TestGraph g("p q C/x C/y p>y q>x y>r x>s");
    LayoutProbe probe(g);
    probe.make_up_to("barycentric_adjust", g.node("C"));
    EXPECT_EQ(probe.levels(/*with_ports=*/true), "q>x p>y | x y | x>s y>r");
}

TEST(BarycentricAdjust, NumbersEveryLevelFromZero) {
    TestGraph g("a b c>d b>e");
    LayoutProbe probe(g);
    probe.make_up_to("barycentric_adjust");
    EXPECT_EQ(probe.ys(1), (std::vector<double>{0, 1, 2}));
    EXPECT_EQ(probe.ys(2), (std::vector<double>{0, 1}));
}

// Deliberate: a node that nothing leads to takes part in its first sort with the y that it had
// before the run, unscaled among ordinals. It is the only way in which an earlier drawing reaches
// a fresh one.
TEST(BarycentricAdjust, AnEarlierYReachesTheFirstSort) {
    for (const bool drawn_before : {false, true}) {
        TestGraph g("s a>b b>c s>c");
        if (drawn_before) {
            g.node("s").SetPosition(0, 500);
        }
        LayoutProbe probe(g);
        probe.make_up_to("barycentric_adjust");
        EXPECT_EQ(probe.levels(), drawn_before ? "a | b s | c" : "a | s b | c");
    }
}

TEST(BarycentricAdjust, OnlyPermutesTheLevels) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        TestGraph g;
        grow(g, seed, shape_of_seed(seed, 40));
        LayoutProbe probe(g);
        probe.make_up_to("place_nodes_on_levels");
        std::vector<std::vector<Node>> before = probe.level_nodes();
        probe.barycentric_adjust();
        ASSERT_EQ(probe.level_nodes().size(), before.size());
        EXPECT_EQ(probe.level_nodes().front(), before.front());
        EXPECT_EQ(probe.level_nodes().back(), before.back());
        for (std::size_t k = 1; k + 1 < before.size(); ++k) {
            EXPECT_TRUE(std::is_permutation(before[k].begin(), before[k].end(),
                                            probe.level_nodes()[k].begin(),
                                            probe.level_nodes()[k].end()));
        }
    }
}

} // namespace
