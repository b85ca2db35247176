#include "nurvex7/model/graph.h"
#include "tests/support/recording_painter.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace nurvex7;

// Notes its calls by the caption of the node: "make a", "update a", "resize a". A graph shows the
// zero shift after a call by where it puts a probe inside the node.
struct recording_layout : ILayout {
    void Make(Node owner) override { note("make", owner); }
    void Update(Node owner) override { note("update", owner); }
    void Resize(Node owner) override { note("resize", owner); }
    void note(const std::string& what, const Node& owner) {
        calls.push_back(what + " " + (owner.GetID() == 0 ? "root" : owner.GetCaption()));
        if (then) {
            then(owner);
        }
    }
    std::vector<std::string> calls;
    std::function<void(Node)> then;
};

struct LayoutDriver : testing::Test {
    LayoutDriver() {
        graph.SetDefaultLayout(graph_ptr2<ILayout>(&layout, /*owns=*/false));
        root.get_vis()->clear_make_list();
    }
    Node add(const Node& owner, const std::string& caption) {
        Node node = Node(owner).AddNode();
        node.SetCaption(caption);
        return node;
    }
    std::vector<std::string> run() {
        layout.calls.clear();
        EXPECT_TRUE(graph.RecalculateLayout(&painter));
        return layout.calls;
    }

    recording_layout layout;
    tests::RecordingPainter painter;
    Graph graph;
    Node root = graph.GetRoot();
};

using lines = std::vector<std::string>;

TEST_F(LayoutDriver, DoesNothingWithoutWork) {
    EXPECT_FALSE(graph.RecalculateLayout(&painter));
    EXPECT_FALSE(graph.RecalculateLayout(nullptr));
    EXPECT_TRUE(painter.take().empty());
    EXPECT_TRUE(layout.calls.empty());
}

TEST_F(LayoutDriver, BracketsTheRunUnlessSomebodyElseDoes) {
    std::vector<bool> started;
    layout.then = [&](const Node&) { started.push_back(painter.paint_started); };
    root.MakeLayout();
    run();
    EXPECT_EQ(painter.take(), (lines{"BeginPaint 3", "EndPaint"}));
    painter.paint_started = true;
    root.MakeLayout();
    run();
    EXPECT_TRUE(painter.take().empty());
    EXPECT_TRUE(painter.paint_started);
    root.MakeLayout();
    EXPECT_TRUE(graph.RecalculateLayout(nullptr));
    EXPECT_EQ(started, (std::vector<bool>{true, true, true}));
}

// A nest told by captions: c owns b, b owns a; x and y stand at the top.
TEST_F(LayoutDriver, RunsWhatTheListsAskFor) {
    const Node b = add(add(root, "c"), "b");
    add(b, "a");
    add(root, "x");
    add(root, "y");
    struct {
        const char* name;
        const char* make;
        const char* update;
        const char* resize;
        lines calls;
    } const cases[] = {
        {"the root", "root", "", "", {"make root"}},
        {"the root covers what comes after it",
         "root x y",
         "",
         "",
         {"make root", "resize root", "resize root"}},
        {"but not what came before",
         "x y root",
         "",
         "",
         {"make root", "make y", "make x", "resize root", "resize root"}},
        {"the root to update", "", "root", "", {"update root"}},
        {"a nested node", "", "b", "", {"update b", "resize c", "resize root"}},
        {"deeper still: the first entry is entered once more",
         "",
         "a",
         "",
         {"update a", "resize b", "resize c", "resize root"}},
        {"the same node twice",
         "",
         "x x",
         "",
         {"update x", "update x", "resize root", "resize root"}},
        {"one node to update and to resize",
         "",
         "x",
         "x",
         {"update x", "resize root", "resize x", "resize root"}},
        {"makes before updates",
         "x",
         "y",
         "",
         {"make x", "update y", "resize root", "resize root"}},
        {"owners of makes before owners of updates",
         "b",
         "x",
         "",
         {"make b", "update x", "resize root", "resize c", "resize root"}},
        {"a covering make covers no update",
         "root",
         "x",
         "",
         {"make root", "update x", "resize root"}},
        {"the root is entered twice, and not thrice",
         "",
         "",
         "x y b x",
         {"resize b", "resize c", "resize y", "resize root", "resize x", "resize root"}},
        {"owners follow what they own",
         "",
         "",
         "b x",
         {"resize x", "resize root", "resize b", "resize c", "resize root"}},
        {"the root alone, again and again",
         "",
         "",
         "root root root",
         {"resize root", "resize root"}},
    };
    const auto each = [&](const char* names, auto queue) {
        std::istringstream words(names);
        for (std::string name; words >> name;) {
            std::function<void(const Node&)> search = [&](const Node& at) {
                NodeSet owned = at.GetOwned();
                for (int i = 0; i < owned.GetCount(); ++i) {
                    search(owned.GetItem(i));
                }
                if (name == (at.GetID() == 0 ? "root" : at.GetCaption())) {
                    queue(at);
                }
            };
            search(root);
        }
    };
    for (const auto& c : cases) {
        each(c.make, [](Node node) { node.MakeLayout(); });
        each(c.update, [](Node node) { node.UpdateLayout(); });
        each(c.resize, [](Node node) { node.ResizeSelf(); });
        EXPECT_EQ(run(), c.calls) << c.name;
        EXPECT_FALSE(graph.RecalculateLayout(&painter)) << c.name << ": the lists are empty now";
    }
}

// Layouts leave what they place relative to the owner.
TEST_F(LayoutDriver, MakesPositionsAbsoluteAfterMakeAndUpdateAlone) {
    Node x = add(root, "x");
    Node inside = add(x, "inside");
    x.SetPosition(100, 50);
    inside.SetPosition(1, 2);
    x.ResizeSelf();
    run();
    EXPECT_EQ(inside.GetPosition(), (tamsel7::point<double>{1, 2}));
    x.MakeLayout();
    run();
    EXPECT_EQ(inside.GetPosition(), (tamsel7::point<double>{101, 52}));
    x.UpdateLayout();
    run();
    EXPECT_EQ(inside.GetPosition(), (tamsel7::point<double>{201, 102}));
}

TEST_F(LayoutDriver, WhatALayoutQueuesGoesUnseen) {
    const Node x = add(root, "x");
    layout.then = [&](const Node&) { Node(x).UpdateLayout(); };
    root.MakeLayout();
    EXPECT_EQ(run(), lines{"make root"});
    EXPECT_FALSE(graph.RecalculateLayout(&painter));
}

TEST_F(LayoutDriver, PassesOverWhatWasRemovedOrHangsInTheAir) {
    Node gone = add(root, "gone");
    const Node inside = add(gone, "inside");
    Node floating = add(root, "floating");
    Node x = add(root, "x");
    for (Node node : {inside, gone, floating, x}) {
        node.MakeLayout();
        node.UpdateLayout();
        node.ResizeSelf();
    }
    gone.Remove();
    Node nobody = gone.GetOwner();
    nobody.MakeLayout();
    nobody.UpdateLayout();
    nobody.ResizeSelf();
    floating.SetOwner(floating);
    EXPECT_EQ(run(), (lines{"make x", "update x", "resize root", "resize x", "resize root"}));
    floating.Remove();
}

// The work is settled before the first layout runs.
TEST_F(LayoutDriver, StillVisitsWhatALayoutRemoves) {
    Node x = add(root, "x");
    Node y = add(root, "y");
    x.UpdateLayout();
    y.UpdateLayout();
    layout.then = [&](const Node& node) {
        if (node == y && !x.IsDummy()) {
            x.Remove();
        }
    };
    EXPECT_EQ(run(), (lines{"update y", "update x", "resize root", "resize root"}));
}

TEST_F(LayoutDriver, ANodeWithoutAnyLayoutStaysAsItIs) {
    Node x = add(root, "x");
    Node inside = add(x, "inside");
    x.SetPosition(100, 50);
    graph.SetDefaultLayout(graph_ptr2<ILayout>());
    x.MakeLayout();
    EXPECT_TRUE(graph.RecalculateLayout(&painter));
    EXPECT_EQ(inside.GetPosition(), tamsel7::point<double>());
}

// The plain form: one list of entries, every owner entered by a recursion, every look a walk.
struct plain_driver {
    std::vector<Node> work;

    void insert_with_owners(const Node& node) {
        if (node.GetID() != 0) {
            insert_with_owners(node.GetOwner());
        }
        for (std::size_t i = 1; i < work.size(); ++i) {
            if (work[i] == node) {
                return;
            }
        }
        work.push_back(node);
    }
};

TEST_F(LayoutDriver, ResizesInTheSameOrderAsThePlainForm) {
    for (unsigned seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::vector<Node> nodes = {root};
        for (int i = 1; i < 12; ++i) {
            nodes.push_back(add(nodes[random() % nodes.size()], std::to_string(i)));
        }
        plain_driver plain;
        const auto picked = [&](unsigned long most) {
            std::vector<Node> list;
            for (unsigned long count = random() % (most + 1); count > 0; --count) {
                list.push_back(nodes[random() % nodes.size()]);
            }
            return list;
        };
        for (Node node : picked(5)) {
            node.ResizeSelf();
            plain.insert_with_owners(node);
        }
        for (Node node : picked(3)) {
            node.UpdateLayout();
            if (node.GetID() != 0) {
                plain.insert_with_owners(node.GetOwner());
            }
        }
        lines expected;
        for (std::size_t i = plain.work.size(); i-- > 0;) {
            expected.push_back("resize " +
                               (plain.work[i].GetID() == 0 ? "root" : plain.work[i].GetCaption()));
        }
        layout.calls.clear();
        graph.RecalculateLayout(&painter);
        std::erase_if(layout.calls, [](const std::string& call) { return call[0] != 'r'; });
        EXPECT_EQ(layout.calls, expected);
        root.Remove();
    }
}

// A list that is compared with itself, or chains of owners walked by recursion, would not end here.
TEST_F(LayoutDriver, BearsLongListsAndDeepNests) {
    Node deep = root;
    for (int depth = 0; depth < 20'000; ++depth) {
        deep = deep.AddNode();
        root.AddNode();
    }
    root.ResizeAll();
    EXPECT_EQ(run().size(), 40'001U + 1U);
    deep.UpdateLayout();
    EXPECT_EQ(run().size(), 1U + 20'000U);
}

} // namespace
