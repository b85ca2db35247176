#include "tests/support/layout_probe.h"
#include "tests/support/plain_queries.h"
#include "tests/support/random_graph.h"
#include "tests/support/scenario.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

using namespace nurvex7;
using namespace nurvex7::testing_support;

bool stands_on_a_level(LayoutProbe& probe, const Node& bend) {
    for (const auto& level : probe.level_nodes()) {
        if (std::find(level.begin(), level.end(), bend) != level.end()) {
            return true;
        }
    }
    return false;
}

/// The break list of an edge as `8: 2@2 3-2`: eight entries, entry 2 stands on level 2 and entry 3
/// only has that level.
std::string chain(LayoutProbe& probe, const Edge& edge, const Node& owner) {
    const std::vector<Node> bends = items(edge.GetBreakNodesIn(owner));
    std::string text = std::to_string(bends.size()) + ":";
    for (std::size_t i = 0; i < bends.size(); ++i) {
        const int level = probe.info(bends[i]).level;
        if (level >= 0) {
            text += " " + std::to_string(i) + (stands_on_a_level(probe, bends[i]) ? "@" : "-") +
                    std::to_string(level);
        }
    }
    return text;
}

struct ChainCase {
    std::string shows;
    std::string words;
    std::string edge;
    std::string owner; ///< empty for the root
    std::string chain;
};

void PrintTo(const ChainCase& c, std::ostream* out) {
    *out << c.shows << ": " << c.words;
}

class Chains : public testing::TestWithParam<ChainCase> {};

TEST_P(Chains, OfOneEdge) {
    const ChainCase& c = GetParam();
    TestGraph g(c.words);
    LayoutProbe probe(g);
    const Node owner = c.owner.empty() ? g.root() : g.node(c.owner);
    probe.make_up_to("place_nodes_on_levels", owner);
    EXPECT_EQ(chain(probe, g.edge(c.edge), owner), c.chain);
}

INSTANTIATE_TEST_SUITE_P(
    Make, Chains,
    testing::Values(
        ChainCase{"to the next level", "a>b", "a>b", "", "4:"},
        ChainCase{"to itself", "a>a", "a>a", "", "6:"},
        ChainCase{"to the level before", "a>b b>a", "b>a", "", "8:"},
        ChainCase{"over two levels", "a>b b>c c>d a>d", "a>d", "", "8: 2@2 3-2 4@3 5-3"},
        ChainCase{"back over one level", "a>b b>c c>a", "c>a", "", "10: 4@2 5-2"},
        ChainCase{"back over two levels", "a>b b>c c>d d>a", "d>a", "", "12: 4@3 5-3 6@2 7-2"},
        ChainCase{"into the owner at level 1", "a>C/x", "a>x", "C", "3: 0@0"},
        ChainCase{"into the owner at level 2", "C/w>C/x a>x", "a>x", "C", "5: 0@0 1-1 2@1"},
        ChainCase{"into the owner at level 3", "C/v>C/w w>C/x a>x", "a>x", "C",
                  "7: 0@0 1-1 2@1 3-2 4@2"},
        ChainCase{"out of the owner from its last level", "C/x>a", "x>a", "C", "3: 2@2"},
        ChainCase{"out of the owner over two levels", "C/x>C/y y>C/z x>a", "x>a", "C",
                  "7: 2@2 3-2 4@3 5-3 6@4"},
        ChainCase{"from inside to the owner itself", "C/x>C", "x>C", "C", "3: 2@2"},
        ChainCase{"through the owner of an owner", "C/D/x>a", "x>a", "C", "3: 2@2"}),
    RowName());

TEST(InsertDummyNodes, EnteringEdgesStandOnTheEntryLevelInTheirOrder) {
    TestGraph g("C/x a>x b>x x>d C/y");
    LayoutProbe probe(g);
    probe.make_up_to("place_nodes_on_levels", g.node("C"));
    EXPECT_EQ(probe.levels(/*with_ports=*/true), "a>x b>x | x y | x>d");
}

TEST(InsertDummyNodes, AnOwnerWithoutBorderEdgesHasEmptyBorderLevels) {
    TestGraph g("C/x");
    LayoutProbe probe(g);
    probe.make_up_to("place_nodes_on_levels", g.node("C"));
    EXPECT_EQ(probe.levels(/*with_ports=*/true), "- | x | -");
}

TEST(InsertDummyNodes, CountsTheTracksUnderBothEnds) {
    TestGraph g("a>b b>c c>a c>a d>d");
    LayoutProbe probe(g);
    probe.make_up_to("place_nodes_on_levels");
    EXPECT_EQ(probe.local("a").wrap_count, 2);
    EXPECT_EQ(probe.local("b").wrap_count, 0);
    EXPECT_EQ(probe.local("c").wrap_count, 2);
    EXPECT_EQ(probe.local("d").wrap_count, 1) << "a loop counts once";
}

TEST(InsertDummyNodes, ANewListReplacesTheOldOne) {
    TestGraph g("a>b b>c a>c");
    LayoutProbe probe(g);
    probe.make();
    probe.make();
    EXPECT_EQ(g.edge("a>c").GetBreakNodes().GetCount(), 6);
}

// An update that opens a level before the first and adds one behind the last has no exit level
// before all nodes are placed: what leaves the owner from there has no chain.
TEST(InsertDummyNodes, AnEdgeOutOfTheLastLevelHasNoChainWhereTheExitLevelComesLater) {
    TestGraph g("C/p");
    g.make();
    g.add("C/n>C/p C/p>C/q C/q>a");
    g.update(g.root());
    EXPECT_EQ(g.edge("q>a").GetBreakNodesIn(g.node("C")).GetCount(), 1);
    EXPECT_EQ(g.edge("q>a").GetBreakNodesIn(g.root()).GetCount(), 4);
}

// What length a list has by the kind of its edge, and that every segment leads to the next level.
TEST(InsertDummyNodes, LengthsAndSegmentsOnRandomGraphs) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        TestGraph g;
        grow(g, seed, shape_of_seed(seed, 30));
        LayoutProbe probe(g);
        probe.make_up_to("place_nodes_on_levels");
        for (const Node& node : items(g.root().GetOwned())) {
            for (const NodeEdgePair& pair : children_of(node)) {
                if (hidden(node) || hidden(pair.node)) {
                    continue;
                }
                const int d = probe.info(pair.node).level - probe.info(node).level;
                const int length = d == 0 ? 6 : 2 * std::abs(d) + (d > 0 ? 2 : 6);
                EXPECT_EQ(pair.edge.GetBreakNodesIn(g.root()).GetCount(), length) << d;
            }
        }
        for (std::size_t k = 1; k + 1 < probe.level_nodes().size(); ++k) {
            for (const Node& node : probe.level_nodes()[k]) {
                for (const NodeEdgePair& pair : probe.local(node).out_neighbours) {
                    EXPECT_EQ(probe.info(pair.node).level, static_cast<int>(k) + 1);
                }
                for (const NodeEdgePair& pair : probe.local(node).in_neighbours) {
                    EXPECT_EQ(probe.info(pair.node).level, static_cast<int>(k) - 1);
                }
            }
        }
    }
}

// Nobody lifts the head with the nodes of this graph, and what comes before all old levels lifts
// every record: the head ends beyond the last level of those that are placed.
TEST(InsertDummyNodes, TheHeadInAnotherGraphMayStandBeyondTheLastLevel) {
    TestGraph other("f");
    TestGraph g("a");
    g.add_edge(g.node("a"), other.node("f"));
    g.add_edge(other.node("f"), g.node("a"));
    LayoutProbe probe(g);
    probe.update_up_to("place_nodes_on_levels");
    EXPECT_EQ(chain(probe, g.edge("a>f"), g.root()), "6: 2@2 3-2");
    g.make();
    other.make();
}

} // namespace
