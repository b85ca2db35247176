#include "nurvex7/viewer/overview_content.h"
#include "tests/support/viewer_window.h"

#include <cmath>

namespace {

using namespace nurvex7;

/// A window of its own, of 200 by 150 pixels, for the whole of a graph of 400 by 300: two units a
/// pixel. The viewer shows 200 by 100 at 100,60, so the frame stands at pixels 50,30 to 150,80.
struct OverviewContent : tests::ViewerWindow {
    OverviewContent() {
        add_a_and_b();
        placed.add_to(b, "inner", {130, 25, 140, 35});
        other.ProcessResize({200, 150});
        overview = new COverviewContent(other.GetRoot(), viewer);
        look_at(100, 60);
        lines();
    }
    std::vector<std::string> lines() {
        painter.take();
        other.ProcessPaint(&painter);
        return painter.take();
    }
    std::string frame() {
        for (const std::string& line : lines()) {
            if (line.rfind("Rectangle ", 0) == 0) {
                return line.substr(10);
            }
        }
        return "none";
    }
    void drag_overview(const std::vector<tamsel7::point<int>>& way) {
        using tamsel7::MouseButton;
        other.ProcessButtonDown(way.front().x, way.front().y, 0, MouseButton::LEFT);
        for (std::size_t i = 1; i < way.size(); ++i) {
            other.ProcessMouseMove(way[i].x, way[i].y, 0, MouseButton::LEFT);
        }
        other.ProcessButtonUp(way.back().x, way.back().y, 0, MouseButton::LEFT);
    }

    tests::FakeWindow overview_window;
    brevolt7::CWindowControl other{overview_window};
    COverviewContent* overview = nullptr;
};

TEST_F(OverviewContent, ShowsTheNodesAndAFrameWithoutEdges) {
    overview->Invalidate();
    std::string text;
    for (const std::string& line : lines()) {
        for (const char* const word :
             {"FillRect", "DrawString", "SetPen", "SetBrush", "Rectangle"}) {
            text += line.rfind(word, 0) == 0 ? line + "\n" : "";
        }
    }
    EXPECT_EQ(text.substr(text.rfind("FillRect")), "FillRect 0,0,200,150\n"
                                                   "DrawString 0,0,0,0 'root' format 0 -1\n"
                                                   "DrawString 0,0,0,0 'a' format 0 -1\n"
                                                   "DrawString 0,0,0,0 'b' format 0 -1\n"
                                                   "DrawString 0,0,0,0 'inner' format 0 -1\n"
                                                   "SetPen #b41414 width 2 style 1\n"
                                                   "SetBrush #000000 style 0\n"
                                                   "Rectangle 100,60,300,160\n");
    EXPECT_EQ(handler.zoom, 0.5);
}

TEST_F(OverviewContent, FollowsTheViewer) {
    look_at(10, 20);
    EXPECT_EQ(frame(), "10,20,210,120");
    viewer->SetScale(4);
    EXPECT_EQ(frame(), "10,20,60,45");
    EXPECT_EQ(frame(), "none") << "nothing has changed";
    control.ProcessResize({400, 100});
    EXPECT_EQ(frame(), "10,20,110,45");
}

TEST_F(OverviewContent, DragsMoveTheFrameOrItsBorders) {
    struct {
        const char* name;
        std::vector<tamsel7::point<int>> way;
        const char* frame;
    } const cases[] = {
        {"inside", {{100, 50}, {101, 50}, {105, 55}}, "110,70,310,170"},
        {"three pixels inside", {{53, 50}, {54, 50}}, "102,60,302,160"},
        {"three pixels outside", {{47, 50}, {60, 50}}, "100,60,300,160"},
        {"the right border", {{150, 50}, {125, 50}}, "100,60,250,135"},
        {"the right border in two steps", {{150, 50}, {140, 50}, {125, 50}}, "100,60,250,135"},
        {"two pixels beside the border catch nothing", {{148, 50}, {125, 50}}, "100,60,300,160"},
        {"the left border", {{50, 50}, {75, 50}}, "150,60,300,135"},
        {"the upper border moves the view", {{100, 30}, {100, 35}}, "100,70,300,170"},
        {"the lower border alone does nothing", {{100, 80}, {100, 90}}, "100,60,300,160"},
        {"the upper left corner", {{50, 30}, {75, 35}}, "150,70,300,145"},
    };
    for (const auto& c : cases) {
        viewer->SetScale(1);
        look_at(100, 60);
        lines();
        drag_overview(c.way);
        viewer->RenewView(false);
        EXPECT_EQ(frame(), c.frame) << c.name;
    }
}

TEST_F(OverviewContent, TheArrowKeysMoveTheViewerByTenUnits) {
    viewer->SetScale(5);
    drag_overview({{199, 149}}); // takes the focus
    for (const int key :
         {brevolt7::KEY_LEFT, brevolt7::KEY_LEFT, brevolt7::KEY_RIGHT, brevolt7::KEY_UP,
          brevolt7::KEY_UP, brevolt7::KEY_UP, brevolt7::KEY_DOWN}) {
        EXPECT_TRUE(other.ProcessKeyDown(0, key));
    }
    EXPECT_EQ(start(), "110,80");
    EXPECT_FALSE(overview->HandleKeyDown(0, brevolt7::KEY_SPACE));
}

TEST_F(OverviewContent, ViewersComeAndGo) {
    CGraphViewer second(nullptr, placed.graph, true);
    overview->SetViewer(&second);
    second.SetStartX(7);
    look_at(50, 50);
    EXPECT_EQ(frame().substr(0, 4), "7,0,") << "the first is not heard any more";
    overview->SetViewer(nullptr);
    overview->Invalidate();
    EXPECT_EQ(frame(), "none") << "only the background";
    overview->SetStartX(3);
    overview->SetViewWidth(3);
    drag_overview({{10, 10}, {20, 20}});
    EXPECT_TRUE(overview->HandleKeyDown(0, brevolt7::KEY_LEFT));
    EXPECT_EQ(second.GetStartX(), 7);
    overview->SetViewer(viewer);
    EXPECT_EQ(frame(), "50,50,250,150");
    delete std::exchange(overview, nullptr);
    look_at(60, 60);
}

TEST_F(OverviewContent, GraphsWithoutAnExtent) {
    viewer->SetGraph(graph_ptr2<Graph>());
    handler.zoom = 0;
    overview->Invalidate();
    EXPECT_NE(frame(), "none");
    EXPECT_EQ(handler.zoom, 0) << "there is no scale at which to draw";
    drag_overview({{10, 10}, {20, 20}});
    other.ProcessResize({0, 0});
    lines();
}

} // namespace
