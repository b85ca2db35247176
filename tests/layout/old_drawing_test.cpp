#include "nurvex7/model/folding.h"
#include "nurvex7/model/moving.h"
#include "tests/support/drawing.h"
#include "tests/support/layout_probe.h"

#include <gtest/gtest.h>

namespace {

using namespace nurvex7;
using namespace nurvex7::testing_support;

TEST(RestoreOldLevels, BringsChainsBackFromTheTailOn) {
    TestGraph g("a>b b>c c>d a>d d>a");
    LayoutProbe probe(g);
    probe.make();
    const std::string drawn = probe.levels();
    probe.update_up_to("restore_old_levels");
    EXPECT_EQ(probe.levels(), drawn);
    // Deliberate: a chain is not joined to its head, and an edge to the next level not at all.
    EXPECT_EQ(probe.local("a").out_neighbours.GetCount(), 1);
    EXPECT_EQ(probe.local("d").in_neighbours.GetCount(), 1) << "of d>a, which leaves d";
    EXPECT_EQ(probe.local("b").in_neighbours.GetCount(), 0);
}

TEST(RestoreOldLevels, TheOrderIsThatOfY) {
    TestGraph g("a b c");
    LayoutProbe probe(g);
    probe.make();
    g.node("a").SetPosition(35, 60);
    probe.update_up_to("restore_old_levels");
    EXPECT_EQ(probe.levels(), "b a c");
}

TEST(RestoreOldLevels, AHiddenNodeLeavesItsLevelAndKeepsItsNumber) {
    TestGraph g("a>b b>c a>d");
    LayoutProbe probe(g);
    probe.make();
    Hide(g.node("b"));
    probe.update();
    EXPECT_EQ(probe.levels(), "a | d | c");
    EXPECT_EQ(probe.level_of("b"), 2);
    EXPECT_EQ(probe.column(3).x_start, 230);
    Hide(g.node("d"));
    probe.update();
    EXPECT_EQ(probe.levels(), "a | - | c");
    Show(g.node("b"));
    Show(g.node("d"));
    probe.update();
    EXPECT_EQ(probe.levels(), "a | b d | c");
}

TEST(Resize, OpensRoomWhereANodeHasGrownAndPlacesNothingNew) {
    TestGraph g("a b c>d");
    g.make();
    g.add("e a>d");
    g.node("a").SetSize({60, 50});
    g.resize(g.root());
    const double top = g.node("a").GetPosition().y;
    // The next one stands 32 below a, and the need is 50 and half of the edge gap: all below it
    // moves by 19.
    EXPECT_EQ(g.node("c").GetPosition().y - top, 32 + 19);
    EXPECT_EQ(g.node("b").GetPosition().y - top, 64 + 19);
    EXPECT_EQ(g.edge("a>d").GetBreakNodes().GetCount(), 0);
    EXPECT_EQ(g.node("e").GetPosition(), (tamsel7::point<double>{0, 0}));
}

TEST(Resize, ConcernsOneOwnerOnly) {
    TestGraph g("C/D/x a>x");
    g.make();
    const tamsel7::size<double> before = g.node("D").GetSize();
    g.node("x").SetSize({200, 20});
    g.layout.Resize(g.node("C"));
    EXPECT_EQ(g.node("D").GetSize(), before);
    g.resize(g.node("D"));
    EXPECT_EQ(g.node("D").GetSize().width, before.width + 140);
    EXPECT_EQ(g.node("C").GetSize().width, before.width + 140 + 70);
}

TEST(Resize, KeepsAbsolutePositionsOfWhatDidNotChange) {
    TestGraph g("a>C/x C/x>C/y C/y>b");
    g.make();
    const std::string before = drawing_text(g);
    g.resize(g.root());
    EXPECT_EQ(drawing_text(g), before);
}

TEST(Update, OfAnOwnerThatWasNeverMadeDrawsItAnew) {
    TestGraph g("a>b b>c a>c");
    LayoutProbe probe(g);
    probe.update();
    EXPECT_EQ(probe.levels(), "a | a>c b | c");
    EXPECT_GT(probe.result_size().height, 0);
}

TEST(Resize, OfAnOwnerThatWasNeverMadeLeavesItEmpty) {
    TestGraph g("a>b");
    LayoutProbe probe(g);
    probe.resize_up_to("resize_epilogue");
    EXPECT_EQ(g.root().GetSize(), (tamsel7::size<double>{30, 0}));
}

TEST(OldDrawing, OfHiddenNodesOnly) {
    TestGraph g("a>b b>b");
    g.make();
    Hide(g.node("a"));
    Hide(g.node("b"));
    g.update(g.root());
    EXPECT_EQ(g.root().GetSize().height, 12);
    g.resize(g.root());
    Show(g.node("a"));
    Show(g.node("b"));
    g.update(g.root());
    EXPECT_EQ(g.edge("a>b").GetBreakNodes().GetCount(), 4);
    EXPECT_EQ(g.edge("b>b").GetBreakNodes().GetCount(), 6);
}

TEST(OldDrawing, OfAnOwnerThatLostItsNodes) {
    TestGraph g("C/x C/y C/x>C/y a");
    g.make();
    g.node("x").Remove();
    g.node("y").Remove();
    g.update(g.root());
    EXPECT_EQ(g.node("C").GetSize(), (tamsel7::size<double>{60, 20})) << "what its handler says";
    g.resize(g.node("C"));
    g.add("C/z");
    g.update(g.root());
    EXPECT_EQ(g.node("C").GetSize(), (tamsel7::size<double>{130, 44}));
}

TEST(OldDrawing, EveryNodeCanLeaveAtOnce) {
    TestGraph g("a>b b>c c>a");
    g.make();
    for (const char* caption : {"a", "b", "c"}) {
        g.node(caption).Remove();
    }
    g.add("d>e");
    g.update(g.root());
    EXPECT_EQ(g.edge("d>e").GetBreakNodes().GetCount(), 4);
}

/// A change that the records do not know of when the next run begins.
struct Surprise {
    const char* what;
    const char* words; ///< the graph that is drawn first
    std::function<void(TestGraph&)> change;
    const char* after_resize; ///< bends of each edge
    const char* after_update;
};

void PrintTo(const Surprise& s, std::ostream* out) {
    *out << s.what;
}

std::string bends_of_edges(const TestGraph& g) {
    std::string text;
    for (const Edge& e : g.edges()) {
        text += name_of(e.From()) + ">" + name_of(e.To()) + " " +
                std::to_string(e.GetBreakNodes().GetCount()) + "; ";
    }
    return text;
}

class Surprises : public testing::TestWithParam<Surprise> {};

// Deliberate: a Resize records every edge between nodes on levels as drawn, also one that it met
// without a route. An Update leaves that as it is; a Make draws all.
TEST_P(Surprises, AreBorneByResizeAndUpdateAndEndWithMake) {
    TestGraph g(GetParam().words);
    g.make();
    GetParam().change(g);
    g.resize(g.root());
    EXPECT_EQ(bends_of_edges(g), GetParam().after_resize);
    g.update(g.root());
    EXPECT_EQ(bends_of_edges(g), GetParam().after_update);
    for (const Node& n : g.nodes()) {
        MoveNode(n, 1, 2);
    }
    g.graph->HitEdgeTest(-1e9, -1e9, 1e9, 1e9);
    g.make();
    for (const Edge& e : g.edges()) {
        EXPECT_GE(e.GetBreakNodes().GetCount(), 4) << name_of(e.From()) + ">" + name_of(e.To());
    }
}

INSTANTIATE_TEST_SUITE_P(
    OldDrawing, Surprises,
    testing::Values(Surprise{"an edge without a list", "a>b b>c",
                             [](TestGraph& g) { g.add("a>c"); }, "a>b 4; b>c 4; a>c 0; ",
                             "a>b 4; b>c 4; a>c 0; "},
                    Surprise{"a list that somebody has cut short", "a>b b>c a>c c>a",
                             [](TestGraph& g) {
                                 for (Edge e : g.edges()) {
                                     e.RemoveBreakNodes();
                                     e.AddBreakNodesIn(g.root(), 1);
                                 }
                             },
                             "a>b 1; b>c 1; a>c 1; c>a 1; ", "a>b 1; b>c 1; a>c 1; c>a 1; "},
                    Surprise{"a node on no level", "a>b", [](TestGraph& g) { g.add("b>c"); },
                             "a>b 4; b>c 0; ", "a>b 4; b>c 4; "},
                    Surprise{"nearly everything was hidden", "a>b b>c !b !c",
                             [](TestGraph& g) {
                                 Show(g.node("b"));
                                 Show(g.node("c"));
                             },
                             "a>b 0; b>c 0; ", "a>b 0; b>c 0; "},
                    Surprise{"an edge across a border at an old inner node", "C/x>C/y a",
                             [](TestGraph& g) { g.add_edge(g.node("a"), g.node("x")); },
                             "x>y 4; a>x 0; ", "x>y 4; a>x 0; "},
                    Surprise{"new nodes at both ends", "a>b",
                             [](TestGraph& g) { g.add("z>a b>c"); }, "a>b 4; z>a 0; b>c 0; ",
                             "a>b 4; z>a 4; b>c 4; "},
                    Surprise{"tracks whose edges were removed", "a>a b>b a>b",
                             [](TestGraph& g) {
                                 g.edge("a>a").Remove();
                                 g.edge("b>b").Remove();
                                 g.edge("a>b").Remove();
                             },
                             "", ""},
                    Surprise{"edges whose source was removed", "a>b a>c c>b",
                             [](TestGraph& g) { g.node("a").Remove(); }, "c>b 4; ", "c>b 4; "},
                    Surprise{"edges whose target was removed", "b>a c>a d>a b>c",
                             [](TestGraph& g) { g.node("a").Remove(); }, "b>c 4; ", "b>c 4; "}));

} // namespace
