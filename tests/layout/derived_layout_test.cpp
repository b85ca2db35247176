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

/// Orders the nodes of a level by caption, instead of by their neighbours.
class Alphabetic : public IncLayout {
public:
    Alphabetic() {
        std::replace(make_phases.begin(), make_phases.end(),
                     static_cast<phase_t>(&Alphabetic::barycentric_adjust),
                     static_cast<phase_t>(&Alphabetic::sort_by_caption));
        std::replace(update_phases.begin(), update_phases.end(),
                     static_cast<phase_t>(&Alphabetic::calculate_new_nodes_y_coords),
                     static_cast<phase_t>(&Alphabetic::place_new_nodes_below));
    }

private:
    void sort_by_caption() {
        for (std::vector<Node>& level : level_nodes) {
            std::sort(level.begin(), level.end(),
                      [](const Node& a, const Node& b) { return name_of(a) < name_of(b); });
            enumerate_level_by_y_coord(&level);
        }
    }

    void place_new_nodes_below() {
        calculate_new_nodes_y_coords();
        for (Node& n : nodes) {
            if (_is_new(n)) {
                n.SetPosition(0, n.GetPosition().y + 100);
            }
        }
    }
};

TEST(DerivedLayout, ReplacesPhasesAndCallsWhatItReplaced) {
    Alphabetic layout;
    TestGraph plain("p>z p>y q>x p q");
    plain.make();
    TestGraph g("p>z p>y q>x p q");
    g.use_layout(layout);
    g.make();
    const auto y = [](const TestGraph& of, const char* caption) {
        return of.node(caption).GetPosition().y;
    };
    EXPECT_LT(y(plain, "z"), y(plain, "y"));
    EXPECT_LT(y(g, "x"), y(g, "y"));
    EXPECT_LT(y(g, "y"), y(g, "z"));
    const double before = y(g, "z") - y(g, "x");
    for (TestGraph* of : {&plain, &g}) {
        of->add("q>w");
        of->update(of->root());
    }
    EXPECT_EQ(y(g, "z") - y(g, "x"), before);
    EXPECT_EQ(y(g, "w"), y(g, "z") + 32 + 100) << "the old phase put it right below";
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
