// What a layout that derives from IncLayout can do with the phases: put one of its own between
// them, replace one, and call them.
#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/model/folding.h"
#include "tests/support/drawing.h"
#include "tests/support/random_graph.h"
#include "tests/support/test_graph.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

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

/// Ends the run at one of its checkpoints.
class Impatient : public IncLayout {
public:
    struct Ended {};

    int patience = -1; ///< for so many checkpoints; below 0 for all
    int seen = 0;

private:
    void checkpoint() override {
        ++seen;
        if (patience >= 0 && seen > patience) {
            throw Ended();
        }
    }
};

// Whatever a run has come to when it is ended, a Make draws as if there had been none: from the
// same places, as a node without neighbours goes by where it stood.
TEST(DerivedLayout, MayEndARunAtACheckpoint) {
    const auto prepare = [](TestGraph& g, bool update) {
        grow(g, 4, shape_of_seed(4, 60));
        g.make();
        if (update) {
            std::mt19937 random(1);
            change(g, random, 8);
        }
    };
    const auto make_from_zero = [](TestGraph& g) {
        for (Node node : g.nodes()) {
            node.SetPosition(0, 0);
        }
        g.make();
    };
    const auto columns_of = [](const TestGraph& g) {
        std::vector<double> all;
        for (const Node& node : g.nodes()) {
            all.push_back(IsFlagSet(node, NODE_HIDDEN) ? 0 : node.GetPosition().x);
        }
        return all;
    };
    for (const bool update : {false, true}) {
        TestGraph base;
        prepare(base, update);
        make_from_zero(base);
        int patience = 0;
        for (bool ended = true; ended; ++patience) {
            SCOPED_TRACE(std::to_string(patience) + (update ? " of Update" : " of Make"));
            Impatient layout;
            TestGraph g;
            g.use_layout(layout);
            prepare(g, update);
            layout.seen = 0;
            layout.patience = patience;
            ended = false;
            try {
                update ? g.update(g.root()) : g.make();
            } catch (const Impatient::Ended&) {
                ended = true;
            }
            layout.patience = -1;
            make_from_zero(g);
            if (update) {
                ASSERT_EQ(columns_of(g), columns_of(base)); // all may stand higher or lower
            } else {
                ASSERT_EQ(drawing_text(g), drawing_text(base));
            }
        }
        EXPECT_GE(patience, 8) << "one for each phase";
    }
}

// A phase that takes long lets others have their turn in its midst.
TEST(DerivedLayout, IsAskedInTheMidstOfLongPhases) {
    Impatient layout;
    TestGraph g;
    g.use_layout(layout);
    std::vector<Node> nodes;
    for (int i = 0; i < 40'000; ++i) {
        nodes.push_back(g.graph->GetRoot().AddNode());
        if (i > 0) {
            nodes[static_cast<std::size_t>(i / 2)].LinkTo(nodes.back());
        }
    }
    g.make();
    EXPECT_GT(layout.seen, 7 + 10);
}

} // namespace
