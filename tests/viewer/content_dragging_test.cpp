#include "tests/support/viewer_window.h"

namespace {

using namespace nurvex7;

struct ContentDragging : tests::ViewerWindow {
    ContentDragging() {
        add_a_and_b();
        placed.add_to(b, "inner", {130, 25, 140, 35});
        content().RenewView(true);
        paint();
    }
};

TEST_F(ContentDragging, ADragPansUnlessAHandlerTakesThePress) {
    viewer->SetScale(2);
    look_at(50, 50);
    drag({{100, 50}, {90, 50}, {80, 70}});
    EXPECT_EQ(start(), "60,40");
    EXPECT_EQ(control.GetCapture(), nullptr);
    drag({{100, 50}, {300, -20}});
    EXPECT_EQ(start(), "10,65") << "the pointer is kept in the view";
    handler.down_result = HANDLED_DONE;
    drag({{100, 50}, {90, 50}, {80, 70}});
    EXPECT_EQ(start(), "10,65");
    handler.down_result = 0;
    press(100, 50, tamsel7::MouseButton::RIGHT);
    move(80, 50);
    EXPECT_EQ(start(), "10,65") << "only the left button drags";
}

TEST_F(ContentDragging, ADragIsNoClick) {
    notes();
    drag({{25, 25}, {27, 25}});
    EXPECT_EQ(notes(), "down a 25,25 | up a 25,25") << "a moved along with the view";
    click(25, 25);
    EXPECT_EQ(notes(), "down a 23,25 | up a 23,25 | click a 23,25");
}

TEST_F(ContentDragging, PansAlsoWhereTheFrameTakesTheSamePress) {
    content().GetRubberRect()->drag_enabled = true;
    drag({{100, 50}, {90, 50}, {80, 70}});
    EXPECT_EQ(start(), "20,-20");
    notes();
    click(5, 45);
    EXPECT_EQ(notes(), "down a 25,25 | up a 25,25 | click a 25,25");
}

TEST_F(ContentDragging, ALeafIsMovedWhereThatIsAllowed) {
    content().AllowNodeDrag(true);
    drag({{25, 25}, {35, 30}, {45, 55}});
    EXPECT_EQ(a.GetPosition(), (tamsel7::point<double>{40, 50}));
    EXPECT_EQ(edge().GetBreakNodes().GetItem(0).GetPosition(), (tamsel7::point<double>{80, 60}));
    EXPECT_EQ(start(), "0,0");
    drag({{125, 22}, {120, 22}});
    EXPECT_EQ(b.GetPosition(), (tamsel7::point<double>{120, 20})) << "a cluster pans";
    EXPECT_EQ(start(), "5,0");
    press(50, 65);
    move(60, 65);
    a.Remove();
    move(70, 65);
    EXPECT_EQ(start(), "-5,0") << "a node that has gone pans";
    release(70, 65);
}

TEST_F(ContentDragging, ALostDragLeavesNoPressBehind) {
    content().AllowNodeDrag(true);
    const std::function<void()> losses[] = {
        [this] { control.ProcessCaptureLost(); },
        [this] { control.SetCapture(control.GetRoot()); },
        [this] { viewer->SetVisible(false); },
    };
    for (std::size_t i = 0; i < std::size(losses); ++i) {
        SCOPED_TRACE(i);
        press(25, 25);
        move(26, 25);
        losses[i]();
        EXPECT_NE(control.GetCapture(), &content());
        move(190, 90);
        control.ReleaseCapture(control.GetRoot());
        release(190, 90);
        viewer->SetVisible(true);
        paint();
        a.SetPosition(20, 20);
        look_at(0, 0);
        notes();
        click(190, 90);
        EXPECT_EQ(notes(), "down root 190,90 | up root 190,90 | click root 190,90");
        drag({{190, 90}, {185, 90}});
        EXPECT_EQ(a.GetPosition().x, 20);
        EXPECT_EQ(start(), "5,0");
        look_at(0, 0);
        notes();
    }
}

TEST_F(ContentDragging, TheRectangleZooms) {
    content().EnableRubberRect(true);
    struct {
        const char* name;
        std::vector<tamsel7::point<int>> way;
        double scale;
        const char* start;
    } const cases[] = {
        {"a slip", {{10, 10}, {20, 90}}, 1, "0,0"},
        {"20 by 80, just not enough", {{10, 10}, {30, 90}}, 1, "0,0"},
        {"wide", {{10, 10}, {110, 50}}, 2, "10,10"},
        {"from the lower right, high", {{50, 95}, {25, 45}}, 2, "25,45"},
    };
    for (const auto& c : cases) {
        viewer->SetScale(1);
        look_at(0, 0);
        drag(c.way);
        EXPECT_EQ(viewer->GetScale(), c.scale) << c.name;
        EXPECT_EQ(start(), c.start) << c.name;
    }
}

TEST_F(ContentDragging, TheRectangleSelects) {
    content().EnableRubberRect(true);
    content().SetRubberMode(RUBBER_SELECT);
    press(100, 10);
    move(190, 50);
    paint();
    notes();
    release(190, 50);
    EXPECT_EQ(notes(), "select b 100,10,190,50 | select inner 100,10,190,50 | "
                       "select root 100,10,190,50 | up root 190,50 | click root 190,50");
    // The corners are taken for pixels: at this scale they lie elsewhere.
    viewer->SetScale(2);
    press(0, 0);
    move(196, 90);
    paint();
    notes();
    release(196, 90);
    EXPECT_EQ(notes().substr(0, 22), "select root 0,0,98,45 ");
}

TEST_F(ContentDragging, GrabsEndWithTheDragTheyWereFor) {
    for (const bool frame : {false, true}) {
        content().EnableRubberRect(frame);
        control.StartGrab();
        content().EndGrabAfterDrag();
        press(25, 25);
        move(30, 30);
        EXPECT_EQ(asked_for("let go"), 0);
        release(30, 30);
        EXPECT_EQ(asked_for("let go"), 1) << frame;
    }
    control.StartGrab();
    drag({{25, 25}, {30, 30}});
    EXPECT_EQ(asked_for("let go"), 0) << "not wanted by anybody";
}

} // namespace
