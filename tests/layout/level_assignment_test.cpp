#include "tests/support/layout_probe.h"

#include <gtest/gtest.h>

namespace {

using namespace nurvex7;
using namespace nurvex7::testing_support;

// Deliberate: removing a node takes a neighbouring edge out of the set of its source with it. The
// head still knows that edge, the tail does not, and the two are components of their own.
TEST(DetermineLevels, BearsAnEdgeThatOnlyItsHeadKnows) {
    TestGraph g("a>b a>c");
    g.node("b").Remove();
    LayoutProbe probe(g);
    probe.make_up_to("place_nodes_on_levels");
    EXPECT_EQ(probe.levels(), "c | - | a");
}

} // namespace
