#include "nurvex7/presentation/dummy_node_handler.h"
#include "tests/support/placed_graph.h"
#include "tests/support/recording_painter.h"

#include <gtest/gtest.h>

namespace {

using nurvex7::DummyNodeHandler;
using Lines = std::vector<std::string>;

// Deliberate: drawn without its mark, unlike every other node, and scaled by the handler itself.
TEST(DummyNodeHandler, DrawsABareRectangleScaledByItsZoom) {
    const tests::PlacedGraph g;
    tests::RecordingPainter painter;
    DummyNodeHandler handler;
    const nurvex7::Node node = g.add("some long caption", {10, 20, 40, 30});
    handler.Draw(node, &painter);
    EXPECT_EQ(painter.take(), Lines{"Rectangle 10,20,40,30"});
    handler.SetZoomFactor(0.5);
    handler.SetZoomFactor(0);
    handler.SetZoomFactor(-3);
    handler.Draw(node, &painter);
    EXPECT_EQ(painter.take(), Lines{"Rectangle 5,10,20,15"});
}

TEST(DummyNodeHandler, GivesEveryNodeTheSameSizeAndClustersNoBand) {
    const tests::PlacedGraph g;
    DummyNodeHandler handler;
    handler.SetZoomFactor(4);
    const nurvex7::Node node = g.add("some long caption", {10, 20, 40, 30});
    EXPECT_EQ(handler.GetSize(node), (tamsel7::size<double>{10, 10}));
    const nurvex7::SizeAndOrigin around = handler.GetSize(node, {70, 80});
    EXPECT_EQ(around.size, (tamsel7::size<double>{70, 80}));
    EXPECT_EQ(around.origin, (tamsel7::point<double>{0, 0}));
}

} // namespace
