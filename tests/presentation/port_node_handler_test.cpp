#include "nurvex7/model/folding.h"
#include "nurvex7/presentation/port_node_handler.h"
#include "tests/support/node_listener.h"
#include "tests/support/recording_painter.h"
#include "tests/support/test_graph.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace nurvex7 {
namespace {

using tamsel7::MouseButton;
using testing_support::TestGraph;

// Where to click on the nodes of these tests, which are all 100 x 20 at 0,0.
constexpr double LEFT_PORT = 5;
constexpr double BODY = 50;
constexpr double RIGHT_PORT = 95;
constexpr double MIDDLE = 10;

/// A graph told in words, and a handler that tells what it emitted.
class PortNodeHandlerTest : public testing::Test {
protected:
    class Probe : public PortNodeHandler {
    public:
        using PortNodeHandler::last_node;
        using PortNodeHandler::left_port_pressed;
        using PortNodeHandler::pressed_nodes;
        using PortNodeHandler::right_port_pressed;
    };

    void SetUp() override {
        // Colours that are not marked as defaults: those that get lightened are.
        handler.drawer.info.port_open_color = {10, 10, 10};
        handler.drawer.info.port_closed_color = {20, 20, 20};
        tell("a>d b>d c>d d>e d>f d>g C/h lone");
    }

    void tell(const std::string& words) {
        graph.add(words);
        for (Node node : graph.nodes()) {
            node.SetSize({100, 20});
            SetFlag(node, NODE_DRAWN, true);
        }
    }

    Node node(const std::string& caption) const { return graph.node(caption); }
    int press(const Node& n, double x, MouseButton button = MouseButton::LEFT) {
        return handler.HandleButtonDown(n, x, MIDDLE, 0, button);
    }
    int release(const Node& n) {
        return handler.HandleButtonUp(n, BODY, MIDDLE, 0, MouseButton::LEFT);
    }
    int click(const Node& n, double x, MouseButton button = MouseButton::LEFT) {
        return handler.HandleClick(n, x, MIDDLE, 0, button);
    }
    /// The symbols of the ports that a draw shows, those of lightened ports followed by a mark.
    std::string ports(const Node& n) {
        handler.Draw(n, &painter);
        std::string symbols;
        std::string mark;
        for (const std::string& line : painter.take()) {
            if (line.rfind("SetBrush", 0) == 0) {
                mark = line.find('?') != line.npos ? "!" : "";
            } else if (line.rfind("DrawString", 0) == 0) {
                const char symbol = line[line.find('\'') + 1];
                symbols += std::string("-+<>").find(symbol) != line.npos ? symbol + mark : "";
            }
        }
        return symbols;
    }
    std::string with_flag(int flag) const {
        std::string text;
        for (const Node& n : graph.nodes()) {
            text += IsFlagSet(n, flag) ? n.GetCaption() : "";
        }
        return text;
    }
    int queued() const { return graph.root().get_vis()->get_update_list()->GetCount(); }

    tests::RecordingPainter painter;
    TestGraph graph;
    Probe handler;
    tests::NodeListener listener{handler, /*with_arguments=*/false};
};

TEST_F(PortNodeHandlerTest, ThePortsFollowTheNeighboursThatAreShown) {
    EXPECT_EQ(ports(node("d")), "--");
    EXPECT_EQ(ports(node("a")), "-") << "no parents, no left port";
    EXPECT_EQ(ports(node("lone")), "");
    Hide(node("a"));
    Hide(node("e"));
    Hide(node("f"));
    EXPECT_EQ(ports(node("d")), "<>");
    Hide(node("b"));
    Hide(node("c"));
    Hide(node("g"));
    EXPECT_EQ(ports(node("d")), "++");
    Show(node("f"));
    EXPECT_EQ(ports(node("d")), "+>");
}

TEST_F(PortNodeHandlerTest, AClickOnAPortFoldsWhatIsShownAndUnfoldsWhatIsNot) {
    EXPECT_EQ(click(node("d"), RIGHT_PORT), HANDLED_REPAINT_ALL);
    EXPECT_EQ(with_flag(NODE_HIDDEN), "efg");
    EXPECT_EQ(click(node("d"), LEFT_PORT), HANDLED_REPAINT_ALL);
    EXPECT_EQ(with_flag(NODE_HIDDEN), "abcefg");
    Show(node("e"));
    click(node("d"), RIGHT_PORT);
    EXPECT_EQ(with_flag(NODE_HIDDEN), "abc") << "one of three shown: a click shows the others";
    EXPECT_EQ(with_flag(NODE_NEW), "fg");
    click(node("d"), LEFT_PORT);
    EXPECT_EQ(with_flag(NODE_HIDDEN), "");
    EXPECT_EQ(with_flag(NODE_SELECTED), "");
    EXPECT_EQ(queued(), 4);
}

TEST_F(PortNodeHandlerTest, AClickElsewhereTogglesTheSelectionAndQueuesNothing) {
    for (const double x : {BODY, LEFT_PORT}) { // on the place of a port that is not there, too
        EXPECT_EQ(click(node("a"), x), HANDLED_REPAINT_ALL);
        EXPECT_EQ(with_flag(NODE_SELECTED), "a");
        EXPECT_EQ(click(node("a"), x), HANDLED_REPAINT_ALL);
        EXPECT_EQ(with_flag(NODE_SELECTED), "");
    }
    EXPECT_EQ(click(node("d"), BODY, MouseButton::RIGHT), HANDLED_NOTHING);
    EXPECT_EQ(click(node("d"), RIGHT_PORT, MouseButton::MIDDLE), HANDLED_NOTHING);
    EXPECT_EQ(with_flag(NODE_SELECTED | NODE_HIDDEN), "");
    EXPECT_EQ(queued(), 0);
}

TEST_F(PortNodeHandlerTest, OnANarrowNodeTheLeftPortIsAskedFirst) {
    Node narrow = node("d");
    narrow.SetSize({20, 20});
    EXPECT_EQ(press(narrow, MIDDLE), HANDLED_REDRAW_NODE);
    EXPECT_TRUE(handler.left_port_pressed && handler.right_port_pressed);
    click(narrow, MIDDLE);
    EXPECT_EQ(with_flag(NODE_HIDDEN), "abc");
    Node start = node("a");
    start.SetSize({20, 20});
    click(start, MIDDLE);
    EXPECT_EQ(with_flag(NODE_HIDDEN), "adbc") << "a left port without parents gives way";
}

TEST_F(PortNodeHandlerTest, APressedPortIsLightenedUntilTheRelease) {
    EXPECT_EQ(press(node("d"), LEFT_PORT), HANDLED_REDRAW_NODE);
    EXPECT_EQ(ports(node("d")), "-!-");
    EXPECT_EQ(ports(node("a")), "-") << "only the pressed node shows it";
    EXPECT_EQ(release(node("d")), HANDLED_REDRAW_NODE);
    EXPECT_EQ(ports(node("d")), "--");

    EXPECT_EQ(press(node("d"), RIGHT_PORT), HANDLED_REDRAW_NODE);
    EXPECT_EQ(ports(node("d")), "--!");
    EXPECT_EQ(release(node("a")), HANDLED_REPAINT_ALL) << "released on another node";
    EXPECT_EQ(ports(node("d")), "--");

    EXPECT_EQ(press(node("a"), LEFT_PORT), HANDLED_REDRAW_NODE);
    EXPECT_EQ(ports(node("a")), "-") << "pressed, but without parents nothing is there to draw";
}

TEST_F(PortNodeHandlerTest, OnlyTheFirstOfManyPressesCounts) {
    EXPECT_EQ(press(node("a"), BODY), HANDLED_NOTHING);
    EXPECT_EQ(press(node("d"), LEFT_PORT), HANDLED_REDRAW_NODE);
    EXPECT_EQ(ports(node("d")), "--");
    EXPECT_EQ(handler.pressed_nodes.size(), 2u);
    EXPECT_EQ(release(node("d")), HANDLED_REPAINT_ALL);
    EXPECT_TRUE(handler.pressed_nodes.empty());
    EXPECT_EQ(release(node("d")), HANDLED_DONE) << "a release without a press";

    EXPECT_EQ(press(node("d"), LEFT_PORT, MouseButton::RIGHT), HANDLED_NOTHING);
    EXPECT_EQ(ports(node("d")), "--") << "the second button is noted but presses no port";
    EXPECT_EQ(release(node("d")), HANDLED_REDRAW_NODE);
}

TEST_F(PortNodeHandlerTest, HoverAndLeaveEndAPressWhereverTheyHappen) {
    press(node("d"), LEFT_PORT);
    EXPECT_EQ(handler.HandleMouseHover(node("a")), HANDLED_REDRAW_NODE);
    EXPECT_EQ(with_flag(NODE_HOVERED), "a");
    EXPECT_FALSE(handler.left_port_pressed);
    EXPECT_TRUE(handler.pressed_nodes.empty());
    press(node("d"), RIGHT_PORT);
    EXPECT_EQ(handler.HandleMouseLeave(node("a")), HANDLED_REDRAW_NODE);
    EXPECT_EQ(with_flag(NODE_HOVERED), "");
    EXPECT_FALSE(handler.right_port_pressed);
    EXPECT_EQ(release(node("d")), HANDLED_DONE);
    EXPECT_EQ(listener.heard, "down:d hover:a down:d leave:a up:d");
}

TEST_F(PortNodeHandlerTest, ALeafHasATooltipWhereasAClusterHasNoneNorPortsNorHover) {
    Node leaf = node("h");
    leaf.SetPosition(30, 40);
    CGraphTooltipEvent event;
    EXPECT_EQ(handler.HandleOnTooltip(leaf, &event), HANDLED_DONE);
    EXPECT_EQ(event.text, "h");
    EXPECT_EQ(event.hot_rect.first, (tamsel7::point<double>{30, 40}));
    EXPECT_EQ(event.hot_rect.second, (tamsel7::point<double>{130, 60}));
    const Node cluster = node("C");
    CGraphTooltipEvent none;
    EXPECT_EQ(press(cluster, LEFT_PORT), HANDLED_NOTHING);
    EXPECT_FALSE(handler.left_port_pressed);
    EXPECT_EQ(click(cluster, BODY), HANDLED_NOTHING);
    EXPECT_EQ(handler.HandleMouseHover(cluster), HANDLED_NOTHING);
    EXPECT_EQ(with_flag(NODE_SELECTED | NODE_HOVERED), "");
    EXPECT_EQ(handler.HandleOnTooltip(cluster, &none), HANDLED_NOTHING);
    EXPECT_EQ(none.text, "");
    EXPECT_EQ(listener.heard, "tooltip:h down:C click:C hover:C");
}

// Deliberate: a click is heard as a click here, whereas other handlers tell it as a double click.
TEST_F(PortNodeHandlerTest, EmitsTheSignalOfEachEventAndKeepsTheLastNodeButTheRoot) {
    const Node d = node("d");
    press(d, LEFT_PORT);
    release(d);
    click(d, BODY, MouseButton::RIGHT);
    handler.HandleDoubleClick(d, BODY, MIDDLE, 0, MouseButton::LEFT);
    EXPECT_EQ(listener.heard, "down:d up:d click:d double:d");
    press(graph.root(), LEFT_PORT);
    EXPECT_EQ(handler.pressed_nodes.size(), 1u);
    ASSERT_EQ(handler.last_node.size(), 1u);
    EXPECT_EQ(handler.last_node[0], d);
}

TEST_F(PortNodeHandlerTest, AnEmptyRootBearsEveryEvent) {
    const TestGraph empty;
    Node root = empty.root();
    CGraphTooltipEvent event;
    press(root, 0);
    EXPECT_EQ(ports(root), "");
    EXPECT_EQ(release(root), HANDLED_REDRAW_NODE);
    EXPECT_EQ(click(root, 0), HANDLED_REPAINT_ALL);
    handler.HandleMouseHover(root);
    EXPECT_EQ(handler.HandleOnTooltip(root, &event), HANDLED_DONE);
    EXPECT_EQ(root.GetCondition(), 0);
    EXPECT_TRUE(handler.last_node.empty());
}

TEST_F(PortNodeHandlerTest, ADerivedHandlerMayCountDifferently) {
    class WithoutChildren : public PortNodeHandler {
    public:
        int CountVisibleParents(Node) override { return 1; }
        int CountAllParents(Node) override { return 2; }
        int CountAllChildren(Node) override { return 0; }
    };
    WithoutChildren other;
    other.Draw(node("d"), &painter);
    EXPECT_EQ(other.drawer.info.left_port_state, PORT_PARTLY_VISIBLE);
    EXPECT_EQ(other.drawer.info.right_port_state, 0);
    Hide(node("a"));
    other.HandleClick(node("d"), LEFT_PORT, MIDDLE, 0, MouseButton::LEFT);
    EXPECT_EQ(with_flag(NODE_HIDDEN), "") << "one of two: unfolded";
    other.HandleClick(node("d"), RIGHT_PORT, MIDDLE, 0, MouseButton::LEFT);
    EXPECT_EQ(with_flag(NODE_SELECTED), "d") << "no children: no port";
}

TEST_F(PortNodeHandlerTest, StartsWithALookOfItsOwn) {
    PortNodeHandler fresh;
    const auto fill = [&](int flag) {
        SetFlag(node("d"), flag, true);
        fresh.Draw(node("d"), &painter);
        for (const std::string& line : painter.take()) {
            if (line.rfind("GradientFill", 0) == 0) {
                return line.substr(13);
            }
        }
        return std::string();
    };
    const std::string rest = " steps 100 direction 0";
    EXPECT_EQ(fill(0), "22,0,78,20 #cdc8c8 to #968282" + rest);
    EXPECT_EQ(fill(NODE_NEW), "22,0,78,20 #a0a0fa to #6464a0" + rest);
    EXPECT_EQ(fill(NODE_SELECTED), "22,0,78,20 #ffa500 to #cdaf00" + rest);
    EXPECT_EQ(tests::text_of(fresh.drawer.info.caption_color), "#780a0a");
}

TEST_F(PortNodeHandlerTest, AllNodesAreEquallyWide) {
    handler.drawer.SetIPainter(&painter);
    INodeHandler& as_handler = handler;
    EXPECT_EQ(as_handler.GetSize(node("a")), (tamsel7::size<double>{156, 15}));
    EXPECT_EQ(as_handler.GetSize(node("lone")), (tamsel7::size<double>{156, 15}));
    EXPECT_EQ(as_handler.GetSize(node("C"), {200, 50}).size, (tamsel7::size<double>{200, 65}));
    painter.take();
    as_handler.SetZoomFactor(2);
    as_handler.GetSize(node("a"));
    EXPECT_EQ(painter.take().front(), "SetFont 'Arial' style 1 size 14");
}

} // namespace
} // namespace nurvex7
