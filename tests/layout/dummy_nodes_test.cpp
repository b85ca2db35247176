#include "tests/support/layout_probe.h"
#include "tests/support/plain_queries.h"

#include <gtest/gtest.h>

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

TEST(InsertDummyNodes, AListIsAsLongAsItsEdgeAndHoldsItsDummies) {
    struct {
        const char* words;
        const char* edge;
        const char* owner;
        const char* chain;
    } const cases[] = {
        // Inside one owner, forwards and backwards.
        {"a>b", "a>b", "", "4:"},
        {"a>a", "a>a", "", "6:"},
        {"a>b b>a", "b>a", "", "8:"},
        {"a>b b>c c>d a>d", "a>d", "", "8: 2@2 3-2 4@3 5-3"},
        {"a>b b>c c>a", "c>a", "", "10: 4@2 5-2"},
        {"a>b b>c c>d d>a", "d>a", "", "12: 4@3 5-3 6@2 7-2"},
        // Into the owner, at the levels 1 to 3.
        {"a>C/x", "a>x", "C", "3: 0@0"},
        {"C/w>C/x a>x", "a>x", "C", "5: 0@0 1-1 2@1"},
        {"C/v>C/w w>C/x a>x", "a>x", "C", "7: 0@0 1-1 2@1 3-2 4@2"},
        // Out of it: from its last level, over two more, to the owner itself, and further up.
        {"C/x>a", "x>a", "C", "3: 2@2"},
        {"C/x>C/y y>C/z x>a", "x>a", "C", "7: 2@2 3-2 4@3 5-3 6@4"},
        {"C/x>C", "x>C", "C", "3: 2@2"},
        {"C/D/x>a", "x>a", "C", "3: 2@2"}};
    for (const auto& c : cases) {
        TestGraph g(c.words);
        LayoutProbe probe(g);
        const Node owner = *c.owner == 0 ? g.root() : g.node(c.owner);
        probe.make_up_to("place_nodes_on_levels", owner);
        EXPECT_EQ(chain(probe, g.edge(c.edge), owner), c.chain) << c.edge << " of " << c.words;
    }
}

TEST(InsertDummyNodes, EnteringEdgesStandOnTheEntryLevelInTheirOrder) {
    TestGraph g("C/x a>x b>x x>d C/y");
    LayoutProbe probe(g);
    probe.make_up_to("place_nodes_on_levels", g.node("C"));
    EXPECT_EQ(probe.levels(/*with_ports=*/true), "a>x b>x | x y | x>d");
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
