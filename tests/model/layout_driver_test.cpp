#include "nurvex7/model/graph.h"
#include "tests/support/recording_painter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace nurvex7;

std::string name_of(const Node& node) {
    return node.GetID() == 0 ? "root" : node.GetCaption();
}

// Notes its calls by the caption of the node: "make a, update a, resize a".
struct recording_layout : ILayout {
    void Make(Node owner) override { note("make", owner); }
    void Update(Node owner) override { note("update", owner); }
    void Resize(Node owner) override { note("resize", owner); }
    void note(const std::string& what, const Node& owner) {
        calls += (calls.empty() ? "" : ", ") + what + " " + name_of(owner);
        if (then) {
            then(owner);
        }
    }
    std::string calls;
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
    std::string run() {
        layout.calls.clear();
        EXPECT_TRUE(graph.RecalculateLayout(&painter));
        return layout.calls;
    }

    recording_layout layout;
    tests::RecordingPainter painter;
    Graph graph;
    Node root = graph.GetRoot();
};

TEST_F(LayoutDriver, BracketsTheRunUnlessSomebodyElseDoesOrThereIsNoWork) {
    using lines = std::vector<std::string>;
    EXPECT_FALSE(graph.RecalculateLayout(&painter));
    EXPECT_EQ(painter.take(), lines{});
    std::vector<bool> started;
    layout.then = [&](const Node&) { started.push_back(painter.paint_started); };
    root.MakeLayout();
    run();
    EXPECT_EQ(painter.take(), (lines{"BeginPaint 3", "EndPaint"}));
    painter.paint_started = true;
    root.MakeLayout();
    run();
    EXPECT_EQ(painter.take(), lines{});
    EXPECT_TRUE(painter.paint_started);
    root.MakeLayout();
    EXPECT_TRUE(graph.RecalculateLayout(nullptr));
    EXPECT_EQ(started, (std::vector<bool>{true, true, true}));
}

// A nest told by captions: c owns b, b owns a; x and y stand at the top.
TEST_F(LayoutDriver, RunsWhatTheListsAskFor) {
    const Node c = add(root, "c");
    const Node b = add(c, "b");
    const std::vector<Node> nodes = {root, c, b, add(b, "a"), add(root, "x"), add(root, "y")};
    struct {
        const char* make;
        const char* update;
        const char* resize;
        const char* calls;
    } const cases[] = {
        {"root", "", "", "make root"},
        // The root covers what comes after it in a list, but not what came before.
        {"root x y", "", "", "make root, resize root, resize root"},
        {"x y root", "", "", "make root, make y, make x, resize root, resize root"},
        {"root", "x", "", "make root, update x, resize root"},
        {"", "root", "", "update root"},
        {"", "b", "", "update b, resize c, resize root"},
        {"", "a", "", "update a, resize b, resize c, resize root"},
        {"", "x x", "", "update x, update x, resize root, resize root"},
        {"", "x", "x", "update x, resize root, resize x, resize root"},
        // Makes come before updates, and so do their owners.
        {"x", "y", "", "make x, update y, resize root, resize root"},
        {"b", "x", "", "make b, update x, resize root, resize c, resize root"},
        // The first entry is entered once more: the root comes twice, and not thrice.
        {"", "", "x y b x", "resize b, resize c, resize y, resize root, resize x, resize root"},
        {"", "", "b x", "resize x, resize root, resize b, resize c, resize root"},
        {"", "", "root root root", "resize root, resize root"},
    };
    const auto each = [&](const char* names, void (Node::*queue)()) {
        std::istringstream words(names);
        for (std::string name; words >> name;) {
            Node node = *std::find_if(nodes.begin(), nodes.end(),
                                      [&](const Node& n) { return name_of(n) == name; });
            (node.*queue)();
        }
    };
    for (const auto& at : cases) {
        SCOPED_TRACE(at.calls);
        each(at.make, &Node::MakeLayout);
        each(at.update, &Node::UpdateLayout);
        each(at.resize, &Node::ResizeSelf);
        EXPECT_EQ(run(), at.calls);
        EXPECT_FALSE(graph.RecalculateLayout(&painter)) << "the lists are empty now";
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
    EXPECT_EQ(run(), "make x, update x, resize root, resize x, resize root");
    floating.Remove();
}

// The work is settled before the first layout runs: what a layout removes is still visited, and
// what it queues goes unseen.
TEST_F(LayoutDriver, DoesWhatWasAskedForBeforeTheFirstLayoutRan) {
    Node x = add(root, "x");
    Node y = add(root, "y");
    x.UpdateLayout();
    y.UpdateLayout();
    layout.then = [&](const Node& node) {
        if (node == y && !x.IsDummy()) {
            x.Remove();
            y.MakeLayout();
        }
    };
    EXPECT_EQ(run(), "update y, update x, resize root, resize root");
    EXPECT_FALSE(graph.RecalculateLayout(&painter));
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
        std::string expected;
        for (std::size_t i = plain.work.size(); i-- > 0;) {
            expected += "resize " + name_of(plain.work[i]) + ", ";
        }
        std::string resizes = graph.RecalculateLayout(&painter) ? layout.calls + ", " : "";
        resizes.erase(0, resizes.find("resize"));
        EXPECT_EQ(resizes, expected);
        layout.calls.clear();
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
    const auto count = [](const std::string& calls) {
        return std::count(calls.begin(), calls.end(), ',') + 1;
    };
    EXPECT_EQ(count(run()), 40'001 + 1);
    deep.UpdateLayout();
    EXPECT_EQ(count(run()), 1 + 20'000);
}

} // namespace
