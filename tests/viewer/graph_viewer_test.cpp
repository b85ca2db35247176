#include "tests/support/viewer_window.h"

namespace {

using namespace nurvex7;

struct GraphViewer : tests::ViewerWindow {};

TEST_F(GraphViewer, AHandlerSurvivesAChangeOfGraph) {
    viewer->SetDefaultNodeHandler(graph_ptr2<INodeHandler>(&handler, /*owns=*/false));
    for (const auto& shown : {placed.graph, graph_ptr2<Graph>()}) {
        viewer->SetGraph(shown);
        ASSERT_NE(viewer->GetGraph().get(), nullptr);
        EXPECT_EQ(viewer->GetGraph()->GetDefaultNodeHandler().get(), &handler);
    }
    tests::NotingNodeHandler second;
    viewer->SetDefaultNodeHandler(graph_ptr2<INodeHandler>(&second, /*owns=*/false));
    EXPECT_EQ(viewer->GetGraph()->GetDefaultNodeHandler().get(), &second);
}

TEST_F(GraphViewer, BarsShowWhereTheViewDoesNotReach) {
    const auto room = [this] {
        paint();
        const auto r = content().GetBounds();
        return std::to_string(r.right) + "x" + std::to_string(r.bottom);
    };
    EXPECT_EQ(room(), "200x100");
    viewer->ScrollbarsEnable(true);
    const std::string with_bars = room();
    EXPECT_LT(content().GetBounds().right, 200);
    EXPECT_LT(content().GetBounds().bottom, 100);
    viewer->SetScale(0.25);
    EXPECT_EQ(room(), "200x100") << "everything shows";
    viewer->SetScale(1);
    EXPECT_EQ(room(), with_bars);
    viewer->ScrollbarsEnable(false);
    EXPECT_EQ(room(), "200x100");
}

TEST_F(GraphViewer, AViewerWorksWithoutAWindow) {
    CGraphViewer alone(nullptr, {300, 200}, brevolt7::Alignment::ALIGN_NONE);
    ASSERT_NE(alone.GetGraph().get(), nullptr);
    alone.SetGraph(placed.graph);
    placed.root().MakeLayout();
    EXPECT_TRUE(alone.RecalculateLayout());
    alone.SetViewWidth(100);
    EXPECT_GT(alone.GetScale(), 2.5);
    alone.SetStartX(20);
    EXPECT_EQ(alone.GetStartX(), 20);
    alone.GetContent()->HandleButtonDown(5, 5, 0, tamsel7::MouseButton::LEFT);
    alone.GetContent()->HandleButtonUp(5, 5, 0, tamsel7::MouseButton::LEFT);
}

} // namespace
