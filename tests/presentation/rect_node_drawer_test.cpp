#include "nurvex7/model/folding.h"
#include "nurvex7/presentation/rect_node_drawer.h"
#include "tests/support/placed_graph.h"
#include "tests/support/recording_painter.h"

#include <gtest/gtest.h>

namespace {

using nurvex7::CRectNodeDrawer;
using nurvex7::Node;
using tests::PlacedGraph;
using tests::RecordingPainter;
using Lines = std::vector<std::string>;

Node drawn(const Node& node, int further_flags = 0) {
    nurvex7::SetFlag(node, nurvex7::NODE_DRAWN | further_flags, true);
    return node;
}

TEST(RectNodeDrawer, DrawsALeafWithItsCaptionInTheMiddle) {
    const PlacedGraph g;
    RecordingPainter painter;
    CRectNodeDrawer drawer;
    drawer.Draw(drawn(g.add("db", {10, 20, 70, 50})), &painter);
    EXPECT_EQ(painter.take(),
              (Lines{
                  "SetPen #000000 width 1 style 1",
                  "SetTextColor #000000",
                  "GetTextSize 'db  '",
                  "GetTextSize 'db'",
                  "GradientFill 10,20,70,50 #ffffff to #7f7f7f steps 100 direction 0",
                  "SetPen #000000 width 1 style 1",
                  "Rectangle 10,20,70,50",
                  "GetTextSize 'db'",
                  "DrawString 10,20,70,50 'db' format 36 -1",
              }));
    EXPECT_EQ(drawer.GetIPainter(), nullptr);
}

TEST(RectNodeDrawer, InstallsTheZoomedFontBeforeItsOtherTools) {
    const PlacedGraph g;
    RecordingPainter painter;
    CRectNodeDrawer drawer;
    for (const double zoom : {1.2, 0.0, -1.0}) { // only what is above zero is taken
        drawer.SetZoomFactor(zoom);
    }
    drawer.info.border_width = 3;
    drawer.info.border_color = {1, 2, 3};
    drawer.info.caption_color = {4, 5, 6};
    const Node shop = drawn(g.add("", {0, 0, 200, 100}));
    PlacedGraph::add_to(shop, "cart");
    drawer.Draw(shop, &painter);
    const Lines lines = painter.take();
    ASSERT_GE(lines.size(), 8u);
    EXPECT_EQ(Lines(lines.begin(), lines.begin() + 7),
              (Lines{"SetFont '' style 4 size 9", "SetPen #010203 width 3 style 1",
                     "SetTextColor #040506", "SetFont '' style 4 size 9", "GetTextSize '       '",
                     "GetTextSize ''", "GetTextSize ' - '"}));
    EXPECT_EQ(lines.back(), "DrawString 0,0,200,100 '' format 9 -1") << "a cluster has it on top";
}

TEST(RectNodeDrawer, AHighlightLightensTheFillAndASelectionShowsNothing) {
    const PlacedGraph g;
    RecordingPainter painter;
    painter.notes_measuring = false;
    CRectNodeDrawer drawer;
    drawer.info.fill_color_1 = {255, 0, 0};
    drawer.info.fill_color_2 = {0, 0, 0, 100};
    const auto fill_of = [&](int flags) {
        drawer.Draw(drawn(g.add("a"), flags), &painter);
        return painter.take().at(2);
    };
    EXPECT_EQ(fill_of(nurvex7::NODE_HIGHLIGHTED),
              "GradientFill 0,0,0,0 #fe4c4c? to #4c4c4c/100? steps 100 direction 0");
    const std::string plain = "GradientFill 0,0,0,0 #ff0000 to #000000/100 steps 100 direction 0";
    EXPECT_EQ(fill_of(nurvex7::NODE_SELECTED), plain);
    EXPECT_EQ(fill_of(nurvex7::NODE_NEW | nurvex7::NODE_HOVERED), plain);
}

TEST(RectNodeDrawer, MeasuresWithItsOwnPainterAndDrawsOnlyWhatIsMarkedAndHasAPainter) {
    const PlacedGraph g;
    RecordingPainter measuring;
    RecordingPainter drawing;
    CRectNodeDrawer drawer;
    drawer.SetIPainter(&measuring);
    const Node node = g.add("four");
    EXPECT_EQ(drawer.GetSize(node), (tamsel7::size<double>{36, 15}));
    measuring.take();
    nurvex7::SetFlag(node, nurvex7::NODE_HIGHLIGHTED | nurvex7::NODE_SELECTED, true);
    drawer.Draw(node, &drawing);
    EXPECT_EQ(drawing.take(), Lines{});
    drawer.Draw(drawn(node), nullptr);
    drawer.Draw(node, &drawing);
    EXPECT_EQ(drawer.GetIPainter(), &measuring);
    EXPECT_EQ(measuring.take(), Lines{});
}

} // namespace
