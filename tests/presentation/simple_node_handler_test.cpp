#include "nurvex7/model/folding.h"
#include "nurvex7/presentation/simple_node_handler.h"
#include "tests/support/placed_graph.h"
#include "tests/support/recording_painter.h"

#include <gtest/gtest.h>

namespace {

// What a viewer does with a node: zoom, measure, draw, all through the interface.
TEST(SimpleNodeHandler, MeasuresAndDrawsByItsDrawer) {
    const tests::PlacedGraph g;
    tests::RecordingPainter painter;
    painter.base_font_size = 8;
    nurvex7::SimpleNodeHandler simple;
    simple.drawer.info.caption_color = {9, 9, 9};
    simple.drawer.SetIPainter(&painter);

    nurvex7::INodeHandler& handler = simple;
    const nurvex7::Node node = g.add("node", {5, 5, 45, 25});
    nurvex7::SetFlag(node, nurvex7::NODE_DRAWN, true);
    handler.SetZoomFactor(0.5);
    EXPECT_EQ(handler.GetSize(node), (tamsel7::size<double>{18, 7.5}));
    EXPECT_EQ(handler.GetSize(node, {4, 10}).size, (tamsel7::size<double>{18, 17.5}));
    painter.take();
    handler.Draw(node, &painter);
    const std::vector<std::string> lines = painter.take();
    ASSERT_GT(lines.size(), 3u);
    EXPECT_EQ(lines[0], "SetFont '' style 4 size 4");
    EXPECT_EQ(lines[2], "SetTextColor #090909");
    EXPECT_EQ(lines.back(), "DrawString 5,5,45,25 'node' format 36 -1");
}

} // namespace
