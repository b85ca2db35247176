#include "apps/nurvex/series_layout.h"
#include "tests/support/drawing.h"
#include "tests/support/random_graph.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

using namespace nurvex7;
using namespace nurvex7::testing_support;

/// Lets every phase look everything up anew.
class Careful : public nurvex::SeriesLayout {
public:
    Careful() : SeriesLayout(30, 12, 2, 5) { shares_tables = false; }
};

// What the phases of a run look up together stays true in between, and levels that nothing has come
// to are in order.
TEST(SeriesLayout, DrawsWithSharedTablesWhatItDrawsWithoutThem) {
    int updates = 0;
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        nurvex::SeriesLayout shared(30, 12, 2, 5);
        Careful careful;
        TestGraph a;
        TestGraph b;
        a.use_layout(shared);
        b.use_layout(careful);
        for (TestGraph* const g : {&a, &b}) {
            grow(*g, seed, shape_of_seed(seed, 3 + static_cast<int>(seed % 40)));
            g->make();
        }
        for (unsigned step = 1; step <= 10; ++step) {
            for (TestGraph* const g : {&a, &b}) {
                std::mt19937 random(seed * 1000 + step);
                change(*g, random, 1 + static_cast<int>(step % 3));
            }
            const UpdateOutlook outlook = shared.LookAhead(a.root());
            ASSERT_EQ(careful.LookAhead(b.root()), outlook);
            const bool fits =
                outlook == UpdateOutlook::FITS || outlook == UpdateOutlook::NOTHING_NEW;
            updates += fits ? 1 : 0;
            for (TestGraph* const g : {&a, &b}) {
                if (!fits) {
                    g->make();
                } else if ((seed + step) % 4 == 0) {
                    g->resize(g->root());
                } else {
                    g->update(g->root());
                }
            }
            ASSERT_EQ(first_difference(a, b), "") << step;
        }
    }
    EXPECT_GT(updates, 1000);
}

// Its edge to a sibling has come to cross the border, and the bends of that edge stand on no level.
TEST(SeriesLayout, BearsANodeThatLeavesItsOwner) {
    nurvex::SeriesLayout layout(30, 12, 2, 5);
    TestGraph g("C/a C/b C/c C/a>C/b C/a>C/c d>C");
    g.use_layout(layout);
    g.make();
    g.node("b").SetOwner(g.root());
    ASSERT_EQ(layout.LookAhead(g.root()), UpdateOutlook::FITS);
    g.update(g.root());
    EXPECT_GT(g.node("b").GetPosition().x,
              g.node("C").GetPosition().x + g.node("C").GetSize().width);
}

} // namespace
