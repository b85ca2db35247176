#include "nurvex7/model/folding.h"
#include "nurvex7/platform/tamsel7/palette.h"
#include "nurvex7/presentation/rect_port_node_drawer.h"
#include "tests/support/placed_graph.h"
#include "tests/support/recording_painter.h"

#include <gtest/gtest.h>

namespace {

using namespace nurvex7;
using tests::PlacedGraph;
using tests::RecordingPainter;
using Lines = std::vector<std::string>;

Node drawn(const Node& node, int further_flags = 0) {
    SetFlag(node, NODE_DRAWN | further_flags, true);
    return node;
}

/// The lines of a draw that begin with one of the words.
Lines picked(const Lines& lines, const std::vector<std::string>& words) {
    Lines result;
    for (const std::string& line : lines) {
        for (const std::string& word : words) {
            if (line.rfind(word, 0) == 0) {
                result.push_back(line);
            }
        }
    }
    return result;
}

// The body of a node 100 x 20 is 56 wide between two squares of 20 and gaps of 2.
TEST(RectPortNodeDrawer, DrawsBodyCaptionAndThenThePortsFromLeftToRight) {
    const PlacedGraph g;
    RecordingPainter painter;
    CRectPortNodeDrawer drawer;
    drawer.SetLeftPortState(PORT_ALL_VISIBLE);
    drawer.SetRightPortState(PORT_PARTLY_VISIBLE | PORT_PRESSED);
    drawer.Draw(drawn(g.add("db", {10, 40, 110, 60})), &painter);
    EXPECT_EQ(painter.take(), (Lines{
                                  "SetPen #000000 width 1 style 1",
                                  "SetTextColor #000000",
                                  "SetBrush #ffffff style 0",
                                  "GetTextSize 'db  '",
                                  "GetTextSize 'db'",
                                  "GradientFill 32,40,88,60 #ffffff to #7f7f7f steps 100 "
                                  "direction 0",
                                  "SetPen #000000 width 1 style 1",
                                  "Rectangle 32,40,88,60",
                                  "DrawString 32,40,88,60 'db' format 36 -1",
                                  "SetBrush #00b200? style 1",
                                  "RoundRect 10,40,30,60 radii 8,8",
                                  "DrawString 10,40,30,60 '-' format 36 -1",
                                  "SetBrush #ffdb70? style 1",
                                  "RoundRect 90,40,110,60 radii 8,8",
                                  "DrawString 90,40,110,60 '>' format 36 -1",
                              }));
    EXPECT_EQ(drawer.GetIPainter(), nullptr);
}

TEST(RectPortNodeDrawer, APortShowsWhatItsStateSays) {
    struct {
        int state;
        std::string brush;
        std::string left; ///< symbol
        std::string right;
    } const looks[] = {{0, "", "", ""},
                       {PORT_PRESSED, "", "", ""},
                       {PORT_ALL_VISIBLE, "#00b200?", "-", "-"},
                       {PORT_ALL_HIDDEN, "#e50000?", "+", "+"},
                       {PORT_PARTLY_VISIBLE, "#ffcc33", "<", ">"},
                       {PORT_ALL_HIDDEN | PORT_PRESSED, "#fe3a3a?", "+", "+"},
                       {7, "#ffcc33", "<", ">"}};
    const PlacedGraph g;
    RecordingPainter painter;
    CRectPortNodeDrawer drawer;
    const Node node = drawn(g.add("", {0, 0, 50, 10}));
    for (const auto& look : looks) {
        for (const bool left : {true, false}) {
            SCOPED_TRACE(look.state);
            drawer.SetLeftPortState(left ? look.state : PORT_PRESSED);
            drawer.SetRightPortState(left ? 0 : look.state);
            drawer.Draw(node, &painter);
            Lines lines = picked(painter.take(), {"SetBrush", "RoundRect", "DrawString"});
            lines.erase(lines.begin(), lines.begin() + 2); // the hollow brush and the caption
            const std::string place = left ? "0,0,10,10" : "40,0,50,10";
            const std::string symbol = left ? look.left : look.right;
            const Lines expected{"SetBrush " + look.brush + " style 1",
                                 "RoundRect " + place + " radii 4,4",
                                 "DrawString " + place + " '" + symbol + "' format 36 -1"};
            EXPECT_EQ(lines, symbol.empty() ? Lines{} : expected);
        }
    }
}

TEST(RectPortNodeDrawer, TheFillTellsSelectedFromNewAndIsLightenedUnderThePointer) {
    const PlacedGraph g;
    RecordingPainter painter;
    CRectPortNodeDrawer drawer;
    drawer.info.fill_color_1 = {1, 0, 0};
    drawer.info.fill_color_2 = {2, 0, 0};
    drawer.info.selected_fill_color_1 = {3, 0, 0};
    drawer.info.selected_fill_color_2 = {4, 0, 0};
    drawer.info.new_fill_color_1 = {0, 0, 0};
    drawer.info.new_fill_color_2 = {255, 0, 0};
    const auto fill_of = [&](int flags) {
        drawer.Draw(drawn(g.add("a"), flags), &painter);
        return picked(painter.take(), {"GradientFill"}).at(0).substr(21, 19);
    };
    EXPECT_EQ(fill_of(0), "#010000 to #020000 ");
    EXPECT_EQ(fill_of(NODE_HIGHLIGHTED), "#010000 to #020000 ");
    EXPECT_EQ(fill_of(NODE_NEW), "#000000 to #ff0000 ");
    EXPECT_EQ(fill_of(NODE_SELECTED), "#030000 to #040000 ");
    EXPECT_EQ(fill_of(NODE_SELECTED | NODE_NEW), "#030000 to #040000 ");
    EXPECT_EQ(fill_of(NODE_NEW | NODE_HOVERED), "#4c4c4c? to #fe4c4c");
}

TEST(RectPortNodeDrawer, AClusterKeepsItsWholeRectangleAndShowsNoPorts) {
    const PlacedGraph g;
    RecordingPainter painter;
    painter.notes_measuring = false;
    CRectPortNodeDrawer drawer;
    drawer.SetLeftPortState(PORT_ALL_VISIBLE);
    drawer.SetRightPortState(PORT_ALL_VISIBLE);
    const Node shop = drawn(g.add("shop", {0, 0, 200, 100}), NODE_HIGHLIGHTED);
    PlacedGraph::add_to(shop, "cart");
    drawer.Draw(shop, &painter);
    EXPECT_EQ(picked(painter.take(), {"GradientFill", "Rectangle", "RoundRect", "DrawString"}),
              (Lines{"GradientFill 0,0,200,100 #ffffff to #7f7f7f steps 100 direction 0",
                     "Rectangle 0,0,200,100", "DrawString 0,0,200,100 'shop' format 9 -1",
                     "Rectangle 0,-1,200,101"}));
}

TEST(RectPortNodeDrawer, AHighlightSurroundsTheBodyAndThePortsThatAreDrawn) {
    const PlacedGraph g;
    RecordingPainter painter;
    CRectPortNodeDrawer drawer;
    drawer.SetZoomFactor(3);
    drawer.info.border_width = 5;
    const Node node = drawn(g.add("a", {100, 100, 150, 110}), NODE_HIGHLIGHTED);
    const auto outline = [&](int left, int right) {
        drawer.SetLeftPortState(left);
        drawer.SetRightPortState(right);
        drawer.Draw(node, &painter);
        const Lines lines = painter.take();
        return Lines(lines.end() - 3, lines.end());
    };
    const std::string brush = "SetBrush #000000 style 0";
    const std::string pen = "SetPen #ff0000 width 1 style 1";
    EXPECT_EQ(outline(0, 0), (Lines{brush, pen, "Rectangle 111,97,139,113"}));
    EXPECT_EQ(outline(PORT_ALL_HIDDEN, 0), (Lines{brush, pen, "Rectangle 97,97,139,113"}));
    EXPECT_EQ(outline(0, PORT_ALL_HIDDEN), (Lines{brush, pen, "Rectangle 111,97,153,113"}));
    EXPECT_EQ(outline(1, 1), (Lines{brush, pen, "Rectangle 97,97,153,113"}));
}

TEST(RectPortNodeDrawer, TheHollowBrushIsThatOfThePalette) {
    const PlacedGraph g;
    RecordingPainter painter;
    CRectPortNodeDrawer drawer;
    tamsel7::SysPalette& palette = tamsel7::GetSysPalette();
    const auto before = palette.GetColor(tamsel7::SysPalette::VIEW_BACKGROUND);
    palette.SetColor(tamsel7::SysPalette::VIEW_BACKGROUND, {7, 8, 9});
    drawer.Draw(drawn(g.add("a")), &painter);
    palette.SetColor(tamsel7::SysPalette::VIEW_BACKGROUND, before);
    EXPECT_EQ(painter.take().at(2), "SetBrush #070809 style 0");
}

TEST(RectPortNodeDrawer, MeasuresAsOthersDo) {
    const PlacedGraph g;
    RecordingPainter measuring;
    CRectPortNodeDrawer drawer;
    drawer.SetIPainter(&measuring);
    const Node node = g.add("four", {5, 7, 9, 9});
    EXPECT_EQ(drawer.GetSize(node), (tamsel7::size<double>{36, 15}));
    const SizeAndOrigin outer = drawer.GetSize(node, {40, 20});
    EXPECT_EQ(outer.size, (tamsel7::size<double>{40, 35}));
    EXPECT_EQ(outer.origin, (tamsel7::point<double>{5, 22}));
    EXPECT_EQ(drawer.GetSize(g.root(), {1, 2}).size, (tamsel7::size<double>{1, 2}));
}

// A node 50 x 10 at 100,200: the squares reach from 100 to 110 and from 140 to 150.
TEST(RectPortNodeDrawer, ThePortsAreSquaresWithTheirBorders) {
    const PlacedGraph g;
    const CRectPortNodeDrawer drawer;
    const Node node = g.add("a", {100, 200, 150, 210});
    const auto port_at = [&](double x, double y) {
        return std::string(drawer.IsLeftPortClicked(node, x, y) ? "left" : "") +
               (drawer.IsRightPortClicked(node, x, y) ? "right" : "");
    };
    EXPECT_EQ(port_at(100, 200), "left");
    EXPECT_EQ(port_at(110, 210), "left");
    EXPECT_EQ(port_at(140, 210), "right");
    EXPECT_EQ(port_at(150, 200), "right");
    EXPECT_EQ(port_at(99.9, 205) + port_at(110.1, 205) + port_at(105, 199.9), "");
    EXPECT_EQ(port_at(139.9, 205) + port_at(150.1, 205) + port_at(145, 210.1), "");
    const Node narrow = g.add("b", {0, 0, 10, 10});
    EXPECT_TRUE(drawer.IsLeftPortClicked(narrow, 5, 5) && drawer.IsRightPortClicked(narrow, 5, 5));
    EXPECT_FALSE(drawer.IsLeftPortClicked(g.add("without a size"), 0, 0));
}

} // namespace
