#include "nurvex7/model/folding.h"
#include "tests/support/layout_probe.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace nurvex7;
using namespace nurvex7::testing_support;

/// The marked edges as `c>a reversed, a>a flat`.
std::string marks(const TestGraph& g, LayoutProbe& probe) {
    std::string text;
    for (const Edge& edge : g.edges()) {
        const LocalEdgeInfo& info = probe.mark(edge);
        if (info.reversed || info.flat) {
            text += text.empty() ? "" : ", ";
            text += edge.GetCaption() + (info.reversed ? " reversed" : " flat");
        }
    }
    return text;
}

// Levels left to right; every level in the order in which its nodes were placed.
TEST(DetermineLevels, OfAFreshDrawing) {
    struct {
        const char* shows;
        const char* words;
        const char* picture;
        const char* marked = "";
    } const cases[] = {
        {"an edge leads one level on", "a>b", "a | b"},
        {"a long edge bends at a dummy", "a>b b>c a>c", "a | a>c b | c"},
        {"the longest path counts", "a>d a>b b>c c>d", "a | a>d b | a>d c | d"},
        {"a cycle is cut once, before its first node", "a>b b>c c>a", "a | b c>a | c",
         "c>a reversed"},
        {"two nodes that know each other are cut at the second edge", "b>a a>b", "b | a",
         "a>b reversed"},
        {"parallel edges count as one neighbour", "b>a a>b a>b", "b | a",
         "a>b reversed, a>b reversed"},
        {"the node with the largest surplus of neighbours out goes first", "a>b b>c c>a c>b",
         "c | a b>c c>b | b", "b>c reversed"},
        {"a loop alone", "a>a", "a", "a>a flat"},
        {"a loop does not keep a source from being one", "a>a a>b", "a | b", "a>a flat"},
        {"sources stand together", "a>c b>c", "a b | c"},
        {"a source stands right before its only successor", "a>b b>c c>d d>e s>e",
         "a | b | c | d s | e"},
        {"a source whose nearest successor is on level 2 stays", "a>b b>c s>b s>c",
         "a s | b s>c | c"},
        {"an isolated node stays on level 1", "a>b b>c x", "a x | b | c"},
        {"a hidden node leaves no gap", "a>b a>c !c", "a | b"},
        {"a hidden node on a path holds its level", "a>b b>c !b", "a | - | c"},
        {"edges of the inside count for the cluster", "C/x a>x y>C", "a y | C"},
        {"edges that stay inside do not", "C/x>C/y b", "C b"},
        {"a cycle through two nodes inside a cluster", "C/x>a a>C/y", "C | a", "a>y reversed"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.shows);
        TestGraph g(c.words);
        LayoutProbe probe(g);
        probe.make_up_to("place_nodes_on_levels");
        EXPECT_EQ(probe.levels(), c.picture);
        EXPECT_EQ(marks(g, probe), c.marked);
    }
}

// Deliberate: removing a node takes a neighbouring edge out of the set of its source with it. The
// head still knows that edge, the tail does not: it is no source, and yet no path reaches it.
TEST(DetermineLevels, BearsAnEdgeThatOnlyItsHeadKnows) {
    TestGraph g("a>b a>c");
    g.node("b").Remove();
    LayoutProbe probe(g);
    probe.make_up_to("place_nodes_on_levels");
    EXPECT_EQ(probe.levels(), "c | - | a");
}

TEST(DetermineNewNodesLevels, OfWhatIsAddedBeforeAnUpdate) {
    struct {
        const char* shows;
        const char* before;
        const char* added;
        const char* picture;
        const char* marked = "";
    } const cases[] = {
        {"a child goes behind its parent", "a>b", "b>c", "a | b | c"},
        {"a parent of the first level opens a level", "b>c", "a>b", "a | b | c"},
        {"a parent goes right before the lowest of its children", "a>b b>c", "n>c n>b",
         "a n | b n>c | c"},
        {"between levels 1 and 4 level 2 is taken", "a>b b>c c>d", "a>n n>d",
         "a | b n | c n>d | d"},
        {"beside its parent and child where both are on one level", "a>p a>c", "p>n n>c",
         "a | p c n", "p>n flat, n>c flat"},
        {"of equal penalties the lowest level", "a>b b>c", "a>n c>n n>b", "a n | b c>n | c",
         "a>n flat, c>n reversed"},
        {"a parallel edge weighs twice", "a>b b>c", "a>n a>n c>n n>b", "a | b n | c",
         "c>n reversed, n>b flat"},
        {"an isolated node starts on level 1", "a>b", "x", "a x | b"},
        {"a whole new component is laid out as in a full run", "a>b", "x>y y>z", "a x | b y | z"},
        {"a new edge between old nodes moves none", "a>b b>c c>d", "a>d", "a | b a>d | c a>d | d"},
        {"a new edge backwards is reversed", "a>b b>c", "c>a", "a | b c>a | c", "c>a reversed"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.shows);
        TestGraph g(c.before);
        LayoutProbe probe(g);
        probe.make();
        g.add(c.added);
        probe.update_up_to("place_nodes_on_levels");
        EXPECT_EQ(probe.levels(), c.picture);
        EXPECT_EQ(marks(g, probe), c.marked);
    }
}

TEST(DetermineNewNodesLevels, AShownNodeReturnsToItsLevel) {
    TestGraph g("a>b b>c c>d !c");
    LayoutProbe probe(g);
    probe.make();
    EXPECT_EQ(probe.levels(), "a | b | - | d");
    Show(g.node("c"));
    probe.update_up_to("place_nodes_on_levels");
    EXPECT_EQ(probe.levels(), "a | b | c | d");
}

// Following every path by itself would take 12 to the power of 11 walks here.
TEST(DetermineLevels, EndsOnADenseGraph) {
    TestGraph g;
    std::vector<Node> before;
    for (int layer = 0; layer < 12; ++layer) {
        std::vector<Node> here;
        for (int i = 0; i < 12; ++i) {
            here.push_back(g.add_node(g.root(), "n"));
            for (const Node& node : before) {
                g.add_edge(node, here.back());
            }
        }
        before = here;
    }
    LayoutProbe probe(g);
    probe.make();
    EXPECT_EQ(probe.info(g.nodes().front()).level, 1);
    EXPECT_EQ(probe.info(g.nodes().back()).level, 12);
}

} // namespace
