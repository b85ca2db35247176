#include "nurvex7/model/folding.h"
#include "nurvex7/model/moving.h"
#include "nurvex7/model/queries.h"
#include "nurvex7/model/structure_index.h"
#include "nurvex7/model/text_graph.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace nurvex7 {
namespace {

/// What a graph holds: `C(a b) d | a>b`, hidden nodes with a `!`, edges by source in set order.
std::string text_of(const Node& owner) {
    std::string text;
    NodeSet owned = owner.GetOwned();
    for (int i = 0; i < owned.GetCount(); ++i) {
        const Node node = owned.GetItem(i);
        const std::string inside = text_of(node);
        text += (i == 0 ? "" : " ") + std::string(IsFlagSet(node, NODE_HIDDEN) ? "!" : "") +
                node.GetCaption() + (inside.empty() ? "" : "(" + inside + ")");
    }
    return text;
}

std::string edges_of(const Node& root) {
    std::string text;
    const auto note = [&](const Edge& edge) {
        text += " " + edge.From().GetCaption() + ">" + edge.To().GetCaption() +
                (edge.GetCaption().empty() ? "" : ":" + edge.GetCaption());
    };
    ForEachNodeIn(root, ProcessOutgoingEdges(note), false, false);
    return text;
}

struct Loaded {
    explicit Loaded(const std::string& text) : graph(new Graph, /*owns=*/true) {
        graph->GetRoot().AddNode().SetCaption("left over");
        std::istringstream in(text);
        result = Load(graph, in);
        content = text_of(graph->GetRoot()) + edges_of(graph->GetRoot());
    }

    graph_ptr2<Graph> graph;
    int result = -1;
    std::string content;
};

TEST(Load, GivesTheGraphOfTheText) {
    struct {
        const char* shows;
        const char* text;
        const char* content;
        int result = 1;
    } const cases[] = {
        {"nothing", "", ""},
        {"only a first line", "title", ""},
        {"nodes and edges", "t\n[nodes]\n1 \"a\" 0 0\n2 \"b\" 0 0\n[edges]\n1 2 \"e\"\n",
         "a b a>b:e"},
        {"no newline at the end", "t\n[nodes]\n1 \"a\" 0 0", "a"},
        {"a header on the first line is swallowed", "[nodes]\n1 \"a\" 0 0\n", ""},
        {"lines before a header and in types", "t\n1 \"a\" 0 0\n[types]\n1 \"b\" 0 0\n", ""},
        {"a header is the whole line", "t\n[nodes] \n1 \"a\" 0 0\n", ""},
        {"an owner below its owned",
         "t\n[nodes]\n1 \"a\" 0 2\n[clusters]\n2 \"C\" 0 0\n[nodes]\n3 \"b\" 0 2\n", "C(a b)"},
        {"owned stand by their number in the file",
         "t\n[nodes]\n9 \"C\" 0 0\n3 \"c\" 0 9\n2 \"b\" 0 9\n1 \"a\" 0 0\n", "C(b c) a"},
        {"owners in a circle: the last one is refused", "t\n[nodes]\n1 \"a\" 0 2\n2 \"b\" 0 1\n",
         "b(a)"},
        {"a number twice: the second node stays at the top",
         "t\n[nodes]\n1 \"C\" 0 0\n2 \"a\" 0 0\n2 \"b\" 0 1\n[edges]\n2 1 \"\"\n", "C a b a>C"},
        {"quotes inside the caption", "t\n[nodes]\n1 \"a \"b\" c\" 0 0\n", "a \"b\" c"},
        {"no quote: the line is all its parts", "t\n[nodes]\n7 0\n", "7 0"},
        {"one quote: the rest is the caption and the numbers", "t\n[nodes]\n1 \"5 0\n", "5 0"},
        {"edges without quotes", "t\n[nodes]\n1 \"a\" 0 0\n[edges]\n1 1\n", "a a>a:1 1"},
        {"blank lines and lines without a number",
         "t\n[nodes]\n\n  \n-1 \"x\" 0 0\n \"y\" 0 0\n1 \"a\" 0 0\n[edges]\n\n-1 9 \"\"\n", "a"},
        {"a carriage return is white space behind a number", "t\n[nodes]\n1 \"a\" 0 0\r\n", "a"},
        {"negative numbers name nodes", "t\n[nodes]\n-5 \"a\" 0 0\n2 \"b\" 0 -5\n", "a(b)"},
        {"the number 0 is a node and no owner",
         "t\n[nodes]\n0 \"a\" 0 0\n1 \"b\" 0 0\n[edges]\n0 1 \"\"\n", "a b a>b"},
        // Faulty ones end with 0 and leave nothing behind.
        {"an edge to nothing", "t\n[nodes]\n1 \"a\" 0 0\n[edges]\n1 2 \"\"\n", "", 0},
        {"an edge above its node",
         "t\n[nodes]\n1 \"a\" 0 0\n[edges]\n1 2 \"\"\n[nodes]\n2 \"b\" 0 0\n", "", 0},
        {"an edge with one number", "t\n[nodes]\n1 \"a\" 0 0\n[edges]\n1 \"\"\n", "", 0},
        {"an unknown owner", "t\n[nodes]\n1 \"a\" 0 0\n2 \"b\" 0 7\n", "", 0},
        {"a node without numbers behind the caption", "t\n[nodes]\n1 \"a\"\n", "", 0},
        {"a malformed type leaves no owner", "t\n[nodes]\n1 \"a\" x 0\n", "", 0},
        // Of a thread the path through its first main children is shown, and nothing else.
        {"the path through the first main children is shown",
         "t\n[nodes]\n1 \"Thread\" 0 0\n2 \"main x\" 0 0\n3 \"a\" 0 0\n4 \"main y\" 0 0\n"
         "5 \"b\" 0 0\n6 \"main z\" 0 0\n7 \"c\" 0 0\n8 \"d\" 0 0\n[edges]\n1 4 \"\"\n"
         "1 2 \"\"\n1 3 \"\"\n2 6 \"\"\n6 7 \"\"\n4 5 \"\"\n",
         "Thread main x a main y !b main z c !d Thread>main y Thread>main x Thread>a "
         "main x>main z main y>b main z>c"},
        {"two threads that meet",
         "t\n[nodes]\n1 \"Thread 1\" 0 0\n2 \"Thread 2\" 0 0\n3 \"main\" 0 0\n"
         "4 \"a\" 0 3\n5 \"b\" 0 0\n[edges]\n1 3 \"\"\n2 3 \"\"\n3 5 \"\"\n",
         "Thread 1 Thread 2 main(!a) b Thread 1>main Thread 2>main main>b"},
        {"case matters", "t\n[nodes]\n1 \"thread\" 0 0\n2 \"a\" 0 0\n", "thread a"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.shows);
        const Loaded loaded(c.text);
        EXPECT_EQ(loaded.result, c.result);
        EXPECT_EQ(loaded.content, c.content);
    }
}

TEST(Load, LeavesNothingNewAndQueuesNothingAndTakesABrokenStreamAsEmpty) {
    const Loaded loaded("t\n[nodes]\n1 \"Thread\" 0 0\n2 \"a\" 0 0\n[edges]\n1 2 \"\"\n");
    const Node root = loaded.graph->GetRoot();
    const auto expect_old = [](const Node& node) { EXPECT_FALSE(IsFlagSet(node, NODE_NEW)); };
    ForEachNodeIn(root, expect_old, false, false);
    EXPECT_EQ(root.get_vis()->get_make_list()->GetCount(), 1) << "the root of a new graph";
    EXPECT_EQ(root.get_vis()->get_update_list()->GetCount(), 0);
    std::istringstream in("t\n[nodes]\n1 \"a\" 0 0\n");
    in.setstate(std::ios::failbit);
    EXPECT_EQ(Load(loaded.graph, in), 1);
    EXPECT_EQ(root.GetOwned().GetCount(), 0);
}

/// The same fields as a stream reads them.
NodeLine read_by_stream(const std::string& text) {
    NodeLine line;
    line.caption = text;
    std::istringstream(text) >> line.id;
    std::istringstream(text) >> line.type >> line.owner;
    return line;
}

std::string random_text(std::mt19937& random) {
    static const std::string letters = "0123456789 \t\r\v+-x.,0001 9";
    std::string text;
    for (unsigned length = static_cast<unsigned>(random() % 24); length > 0; --length) {
        text += letters[random() % letters.size()];
    }
    return text;
}

void expect_what_a_stream_reads(const std::string& text) {
    SCOPED_TRACE(testing::PrintToString(text));
    const NodeLine expected = read_by_stream(text);
    const NodeLine node = ReadNodeLine(text);
    EXPECT_EQ(node.id, expected.id);
    EXPECT_EQ(node.type, expected.type);
    EXPECT_EQ(node.owner, expected.owner);
    const EdgeLine edge = ReadEdgeLine(text);
    EXPECT_EQ(edge.from, expected.type);
    EXPECT_EQ(edge.to, expected.owner);
}

TEST(ReadNumbers, AsAStreamDoesAtTheEdges) {
    // clang-format off
    for (const char* text :
         {"", " ", "-", "+", "+-1", "- 5", "--5", "5-", "5 -", "007 8", "0x10 1", "2147483647 1",
          "2147483648 1", "-2147483648 1", "-2147483649 1", "-21474836480 1", "21474836480 1",
          "99999999999999999999999 1", "-99999999999999999999999", "1e5 2", "1.5 2", "1,000 2",
          "1\f2", "\n1\n2", "x 1", "1 x", "00000000000000000000000000001 2"}) {
        // clang-format on
        expect_what_a_stream_reads(text);
    }
    expect_what_a_stream_reads(std::string("1\0 2", 4));
}

TEST(ReadNumbers, AsAStreamDoesOnRandomText) {
    std::mt19937 random(7);
    for (int i = 0; i < 50'000 && !testing::Test::HasFailure(); ++i) {
        expect_what_a_stream_reads(random_text(random));
    }
}

// A chain as long and a nest as deep as callers come with: every walk has to do without the stack.

TEST(LongChain, IsLoadedMarkedShiftedAndTornDown) {
    constexpr int LENGTH = 300'000;
    std::string text = "t\n[nodes]\n";
    for (int i = 1; i <= LENGTH; ++i) {
        text += std::to_string(i) + " \"\" 0 0\n";
    }
    text += "[edges]\n";
    for (int i = 1; i < LENGTH; ++i) {
        text += std::to_string(i) + ' ' + std::to_string(i + 1) + " \"\"\n";
    }
    std::istringstream in(text);
    graph_ptr2<Graph> graph(new Graph, true);
    ASSERT_EQ(Load(graph, in), 1);
    MarkDrawnIn(graph);
    ShiftPosition(graph->GetRoot(), 0, 0);
    NodeSet owned = graph->GetRoot().GetOwned();
    ASSERT_EQ(owned.GetCount(), LENGTH);
    EXPECT_EQ(OutDegree(owned.GetItem(LENGTH - 2)), 1);
}

TEST(DeepNest, IsLoadedMarkedShiftedAndTornDown) {
    constexpr int DEPTH = 10'000;
    std::string nodes = "t\n[nodes]\n";
    std::string edges = "[edges]\n";
    for (int i = 1; i <= DEPTH; ++i) {
        const std::string own = std::to_string(2 * i);
        const std::string beside = std::to_string(2 * i + 1);
        const std::string owner = " \"\" 0 " + std::to_string(2 * i - 2) + "\n";
        nodes += own + owner;
        nodes += beside + owner;
        edges += own + ' ' + beside + " \"\"\n";
    }
    std::istringstream in(nodes + edges);
    graph_ptr2<Graph> graph(new Graph, true);
    ASSERT_EQ(Load(graph, in), 1);
    Hide(graph->GetRoot().GetOwned().GetItem(0));
    MarkDrawnIn(graph);
    Node innermost = graph->GetRoot();
    for (NodeSet owned = innermost.GetOwned(); owned.GetCount() > 0;) {
        innermost = owned.GetItem(0);
        innermost.SetPosition(1, 2);
        owned = innermost.GetOwned();
    }
    ShiftPosition(graph->GetRoot(), 0, 0);
    EXPECT_EQ(innermost.GetPosition(), (tamsel7::point<double>{DEPTH, 2.0 * DEPTH}));
    UnshiftPosition(graph->GetRoot());
    EXPECT_EQ(innermost.GetPosition(), (tamsel7::point<double>{1, 2}));
    EXPECT_FALSE(IsFlagSet(innermost, NODE_DRAWN));
    EXPECT_EQ(GetRoot(innermost), graph->GetRoot());
}

} // namespace
} // namespace nurvex7
