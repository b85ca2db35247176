#include "apps/nurvex/starts.h"
#include "nurvex7/model/folding.h"
#include "tests/support/test_graph.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>

namespace nurvex {
namespace {

using namespace nurvex7;
using nurvex7::testing_support::TestGraph;

TEST(Starts, TheyAndTheirClustersAreShownAndNothingElse) {
    struct {
        const char* what;
        const char* words;
        const char* expected; ///< what is shown
    } const graphs[] = {
        {"nothing at all", "", ""},
        {"where edges begin", "a>b b>c d>c e", "ade"},
        {"an edge to itself is no parent", "a>a a>b", "a"},
        {"a cycle that nothing leads into, beside a start", "a>b c>d d>e e>c", "ac"},
        {"one that is met behind what it leads to", "a b>a c>d d>c c>b", "c"},
        {"one that is led into", "a>b b>c c>b", "a"},
        {"two, and one leads into the other", "a>b b>a c>d d>c d>a", "c"},
        {"clusters without a start", "C/D/a>E/b E/b>F/c G", "CDaG"},
        {"a cluster was hidden, its start as well", "C/a>b !C !a", "Ca"},
        {"a cluster has no port that could show what it leads to", "C/a>b C>c", "Cac"},
    };
    for (const auto& c : graphs) {
        SCOPED_TRACE(c.what);
        const TestGraph g(c.words);
        for (const Node& node : g.nodes()) {
            Select(node);
        }
        ShowOnlyStarts(g.root());
        std::set<char> shown;
        for (const Node& node : g.nodes()) {
            EXPECT_NE(IsFlagSet(node, NODE_HIDDEN), IsFlagSet(node, NODE_SELECTED));
            if (!IsFlagSet(node, NODE_HIDDEN)) {
                shown.insert(node.GetCaption().front());
            }
        }
        const std::string expected(c.expected);
        EXPECT_EQ(shown, std::set<char>(expected.begin(), expected.end()));
    }
}

/// Against the plain meaning: all is reached from the starts, and no start from another one.
TEST(Starts, AreNoMoreThanItTakes) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        std::mt19937 random(seed);
        TestGraph g("a b c d e f g h i j k l");
        for (unsigned i = 0; i < 4 + seed / 2; ++i) {
            g.add_edge(g.nodes()[random() % 12], g.nodes()[random() % 12]);
        }
        std::set<int> reached;
        const std::vector<Node> starts = FindStarts(g.root());
        for (const Node& start : starts) {
            std::set<int> from_here{start.GetID()};
            for (std::size_t grown = 0; grown != from_here.size();) {
                grown = from_here.size();
                for (const Edge& edge : g.edges()) {
                    if (from_here.count(edge.From().GetID()) > 0) {
                        from_here.insert(edge.To().GetID());
                    }
                }
            }
            for (const Node& other : starts) {
                EXPECT_TRUE(other == start || from_here.count(other.GetID()) == 0) << seed;
            }
            reached.insert(from_here.begin(), from_here.end());
        }
        EXPECT_EQ(reached.size(), 12U) << seed;
    }
}

} // namespace
} // namespace nurvex
