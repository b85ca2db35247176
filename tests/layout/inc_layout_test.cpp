// The layout against its plainest form, to the last bit.
#include "tests/support/drawing.h"
#include "tests/support/twin.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace nurvex7;
using namespace nurvex7::testing_support;

void expect_equal_make(unsigned seed, int nodes) {
    SCOPED_TRACE("seed " + std::to_string(seed) + ", nodes " + std::to_string(nodes));
    Twin twin;
    twin.both([&](TestGraph& g) {
        grow(g, seed, shape_of_seed(seed, nodes));
        g.make();
    });
    ASSERT_EQ(first_difference(twin.product, twin.plain_graph), "");
    twin.both([](TestGraph& g) { g.make(); });
    ASSERT_EQ(first_difference(twin.product, twin.plain_graph), "") << "made again";
}

class Agreement : public testing::TestWithParam<unsigned> {};

TEST_P(Agreement, OfMakeOnSmallGraphs) {
    for (unsigned i = 0; i < 50; ++i) {
        const unsigned seed = GetParam() * 50 + i;
        expect_equal_make(seed, 2 + static_cast<int>(seed * 37 % 59));
        if (HasFatalFailure()) {
            return;
        }
    }
}

TEST(Agreement, OfMakeOnLargeGraphs) {
    for (unsigned seed = 1; seed <= 4; ++seed) {
        expect_equal_make(seed, 300);
    }
}

// The graph changes as an application changes it; where a change would break the duty that Update
// leaves to its caller, everything is made anew.
TEST_P(Agreement, OfUpdateAndResizeAfterRandomChanges) {
    for (unsigned i = 0; i < 20; ++i) {
        const unsigned seed = GetParam() * 20 + i;
        SCOPED_TRACE("seed " + std::to_string(seed));
        Twin twin;
        twin.both([&](TestGraph& g) {
            grow(g, seed, shape_of_seed(seed, 3 + static_cast<int>(seed % 25)));
            g.make();
        });
        for (unsigned step = 1; step <= 12; ++step) {
            SCOPED_TRACE("step " + std::to_string(step));
            const unsigned what = seed * 31 + step * 7;
            twin.both([&](TestGraph& g) {
                std::mt19937 random(seed * 1000 + step);
                change(g, random, 1 + static_cast<int>(step % 3));
            });
            const bool ends = twin.plain.UpdateEnds(twin.plain_graph.root());
            twin.both([&](TestGraph& g) {
                if (!ends) {
                    g.make();
                } else if (what % 3 == 0) {
                    g.resize(g.root());
                } else {
                    g.update(g.root());
                }
            });
            ASSERT_EQ(first_difference(twin.product, twin.plain_graph), "");
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, Agreement, testing::Range(0U, 10U));

} // namespace
