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

TEST(Resize, OfAnOwnerThatWasNeverMadeLeavesItEmpty) {
    TestGraph g("a>b");
    LayoutProbe probe(g);
    probe.resize_up_to("resize_epilogue");
    EXPECT_EQ(g.root().GetSize(), (tamsel7::size<double>{30, 0}));
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

std::string bends_of_edges(const TestGraph& g) {
    std::string text;
    for (const Edge& e : g.edges()) {
        text += name_of(e.From()) + ">" + name_of(e.To()) + " " +
                std::to_string(e.GetBreakNodes().GetCount()) + "; ";
    }
    return text;
}

void cut_all_short(TestGraph& g) {
    for (Edge e : g.edges()) {
        e.RemoveBreakNodes();
        e.AddBreakNodesIn(g.root(), 1);
    }
}

// Deliberate: a Resize records every edge between nodes on levels as drawn, also one that it met
// without a route. An Update leaves that as it is; a Make draws all.
TEST(OldDrawing, WhatTheRecordsDoNotKnowOfIsBorneAndEndsWithMake) {
    struct {
        const char* what;
        const char* words; ///< the graph that is drawn first
        std::function<void(TestGraph&)> change;
        const char* after_resize; ///< bends of each edge
        const char* after_update;
    } const surprises[] = {{"an edge without a list", "a>b b>c", [](TestGraph& g) { g.add("a>c"); },
                            "a>b 4; b>c 4; a>c 0; ", "a>b 4; b>c 4; a>c 0; "},
                           {"a list that somebody has cut short", "a>b b>c a>c c>a", cut_all_short,
                            "a>b 1; b>c 1; a>c 1; c>a 1; ", "a>b 1; b>c 1; a>c 1; c>a 1; "},
                           {"a node on no level", "a>b", [](TestGraph& g) { g.add("b>c"); },
                            "a>b 4; b>c 0; ", "a>b 4; b>c 4; "},
                           {"nearly everything was hidden", "a>b b>c !b !c",
                            [](TestGraph& g) {
                                Show(g.node("b"));
                                Show(g.node("c"));
                            },
                            "a>b 0; b>c 0; ", "a>b 0; b>c 0; "},
                           {"an edge across a border at an old inner node", "C/x>C/y a",
                            [](TestGraph& g) { g.add_edge(g.node("a"), g.node("x")); },
                            "x>y 4; a>x 0; ", "x>y 4; a>x 0; "},
                           {"new nodes at both ends", "a>b", [](TestGraph& g) { g.add("z>a b>c"); },
                            "a>b 4; z>a 0; b>c 0; ", "a>b 4; z>a 4; b>c 4; "},
                           {"tracks whose edges were removed", "a>a a>b",
                            [](TestGraph& g) {
                                g.edge("a>a").Remove();
                                g.edge("a>b").Remove();
                            },
                            "", ""},
                           {"edges whose source was removed", "a>b a>c c>b",
                            [](TestGraph& g) { g.node("a").Remove(); }, "c>b 4; ", "c>b 4; "},
                           {"edges whose target was removed", "b>a c>a d>a b>c",
                            [](TestGraph& g) { g.node("a").Remove(); }, "b>c 4; ", "b>c 4; "}};
    for (const auto& s : surprises) {
        SCOPED_TRACE(s.what);
        TestGraph g(s.words);
        g.make();
        s.change(g);
        g.resize(g.root());
        EXPECT_EQ(bends_of_edges(g), s.after_resize);
        g.update(g.root());
        EXPECT_EQ(bends_of_edges(g), s.after_update);
        for (const Node& n : g.nodes()) {
            MoveNode(n, 1, 2);
        }
        g.graph->HitEdgeTest(-1e9, -1e9, 1e9, 1e9);
        g.make();
        for (const Edge& e : g.edges()) {
            EXPECT_GE(e.GetBreakNodes().GetCount(), 4) << name_of(e.From()) + ">" + name_of(e.To());
        }
    }
}

} // namespace
