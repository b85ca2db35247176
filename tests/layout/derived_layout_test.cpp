// What a layout that derives from IncLayout can do with the phases: put one of its own between
// them, replace one, and call them.
#include "nurvex7/layout/inc_layout.h"
#include "tests/support/drawing.h"
#include "tests/support/random_graph.h"
#include "tests/support/test_graph.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

using namespace nurvex7;
using namespace nurvex7::testing_support;

/// Keeps level 1 for nodes whose caption is a capital.
class CapitalsFirst : public IncLayout {
public:
    CapitalsFirst() {
        const auto place = std::find(make_phases.begin(), make_phases.end(),
                                     &CapitalsFirst::place_nodes_on_levels);
        make_phases.insert(place, static_cast<phase_t>(&CapitalsFirst::put_capitals_first));
    }

    /// What stands on the levels, and what is new there.
    std::string seen() {
        std::string text;
        for (std::size_t k = 1; k + 1 < level_nodes.size(); ++k) {
            text += k > 1 ? "|" : "";
            for (const Node& n : level_nodes[k]) {
                text += " " + name_of(n) + (_is_new(n) ? "*" : "");
                EXPECT_EQ((*cur_info)[n].level, static_cast<int>(k));
            }
            text += " ";
        }
        return text;
    }

private:
    void put_capitals_first() {
        for (const Node& n : nodes) {
            (*cur_info)[n].level += n.GetCaption() > "Z" ? 1 : 0;
        }
        mark_reversed_edges(&nodes, /*by_order=*/false);
    }
};

TEST(DerivedLayout, PutsAPhaseBetweenThoseOfMake) {
    CapitalsFirst layout;
    TestGraph g("A>b b>c d e>d A>c");
    g.use_layout(layout);
    g.make();
    EXPECT_EQ(layout.seen(), " A* | A>b* A>c* e* | b* A>c* d* | c* ");
    g.add("n>e b>m");
    g.update(g.root());
    EXPECT_EQ(layout.seen(), " A n* | A>b A>c e | b A>c d | c m* ")
        << "an update keeps the levels it finds";
}

/// Does what its base does, with every phase behind a member of its own.
class Wrapping : public IncLayout {
public:
    explicit Wrapping(bool flat) {
        serves_nests_flat = flat;
        std::replace(make_phases.begin(), make_phases.end(),
                     static_cast<phase_t>(&Wrapping::force_adjust),
                     static_cast<phase_t>(&Wrapping::adjust));
    }
    void Make(Node owner) override {
        ++made;
        IncLayout::Make(owner);
    }

    int made = 0;

private:
    void adjust() { force_adjust(); }
};

TEST(DerivedLayout, OfNestsDrawsWhatItsBaseDraws) {
    for (unsigned seed = 0; seed < 20; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        TestGraph base;
        grow(base, seed, shape_of_seed(seed, 40));
        base.make();
        for (const bool flat : {false, true}) {
            Wrapping layout(flat);
            TestGraph g;
            g.use_layout(layout);
            grow(g, seed, shape_of_seed(seed, 40));
            g.make();
            EXPECT_EQ(first_difference(g, base), "");
            EXPECT_EQ(layout.made, 41) << "once for each node and the root";
        }
    }
}

} // namespace
