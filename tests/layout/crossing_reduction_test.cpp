#include "tests/support/layout_probe.h"

#include <gtest/gtest.h>

namespace {

using namespace nurvex7;
using namespace nurvex7::testing_support;

TEST(BarycentricAdjust, OrdersTheLevelsInThreeSweeps) {
    struct {
        const char* shows;
        const char* words;
        const char* picture;
    } const cases[] = {{"two edges that cross are uncrossed", "a b c d a>d b>c", "a b | d c"},
                       {"equal keys keep their order", "a d c b a>c a>d a>b", "a | d c b"},
                       {"a single level is not sorted", "c a b", "c a b"},
                       {"parallel edges weigh twice", "a b c y x b>y a>x a>x c>x", "a c b | x y"},
                       {"a node without neighbours stays near its old place",
                        "a b c x y z a>x b>y b>z n", "a b c n | x y z"},
                       {"a dummy is sorted like a real node", "a b p q z b>q a>p q>z p>z a>z",
                        "a b | a>z p q | z"},
                       {"a loop counts for nothing", "a b c d a>d b>c c>c", "a b | d c"}};
    for (const auto& c : cases) {
        TestGraph g(c.words);
        LayoutProbe probe(g);
        probe.make_up_to("barycentric_adjust");
        EXPECT_EQ(probe.levels(), c.picture) << c.shows;
    }
}

TEST(BarycentricAdjust, PortsInfluenceNoOrder) {
    TestGraph g("p q C/x C/y p>y q>x y>r x>s");
    LayoutProbe probe(g);
    probe.make_up_to("barycentric_adjust", g.node("C"));
    EXPECT_EQ(probe.levels(/*with_ports=*/true), "q>x p>y | x y | x>s y>r");
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

} // namespace
