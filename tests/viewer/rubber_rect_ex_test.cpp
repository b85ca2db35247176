#include "tests/support/viewer_window.h"

#include <algorithm>

namespace {

using namespace nurvex7;

/// The rectangle on a viewer whose root is 400 by 300.
struct RubberRectEx : tests::ViewerWindow {
    RubberRectEx() {
        content().EnableRubberRect(true);
        rubber.sig_start.connect(this, &RubberRectEx::on_start);
        rubber.sig_move.connect(this, &RubberRectEx::on_move);
        rubber.sig_finish.connect(this, &RubberRectEx::on_finish);
    }
    using point = tamsel7::point<double>;
    static std::string text(point p) { return tests::text_of(p.x) + "," + tests::text_of(p.y); }
    void on_start(CContent::frame_rubber*, point a, point) { told += "start " + text(a) + " "; }
    void on_move(CContent::frame_rubber*, point, point b, point) { told += "to " + text(b) + " "; }
    void on_finish(CContent::frame_rubber*, point a, point b) {
        told += "finish " + text(a) + " " + text(b) + " ";
    }
    /// The frames that a pass draws or erases.
    std::vector<std::string> frames() {
        painter.take();
        control.ProcessPaint(&painter);
        std::vector<std::string> lines = painter.take();
        std::erase_if(lines,
                      [](const std::string& l) { return l.rfind("DrawFocusFrame", 0) != 0; });
        for (std::string& line : lines) {
            line = line.substr(15);
        }
        return lines;
    }
    using list = std::vector<std::string>;

    CContent::frame_rubber& rubber = *content().GetRubberRect();
    std::string told;
};

TEST_F(RubberRectEx, TheFrameFollowsThePointerAndGoes) {
    press(20, 10);
    EXPECT_EQ(frames(), list{}) << "not before it has moved";
    move(50, 30);
    EXPECT_EQ(frames(), list{"20,10,50,30"});
    EXPECT_EQ(frames(), list{}) << "it stands";
    move(40, 5);
    EXPECT_EQ(frames(), (list{"20,10,50,30", "20,5,40,10"})) << "the old one is erased first";
    move(60, 60);
    move(70, 70);
    EXPECT_EQ(frames(), (list{"20,5,40,10", "20,10,70,70"}));
    move(80, 80);
    release(80, 80);
    told.erase(0, told.rfind("start"));
    EXPECT_EQ(told, "start 20,10 to 50,30 to 40,5 to 60,60 to 70,70 to 80,80 finish 20,10 70,70 ")
        << "the frame as it was seen counts";
    EXPECT_EQ(frames(), list{});
}

TEST_F(RubberRectEx, AFrameThatIsGivenUpIsPaintedOver) {
    for (const bool lost : {false, true}) {
        press(20, 10);
        move(50, 25);
        frames();
        if (lost) {
            control.ProcessCaptureLost();
        } else {
            release(50, 25);
        }
        EXPECT_EQ(paint(), "[18,8,53,28] root") << lost;
        EXPECT_FALSE(rubber.dragging);
    }
}

TEST_F(RubberRectEx, OnlyAnEnabledOneStartsAndOnlyByTheLeftButton) {
    press(20, 10, tamsel7::MouseButton::RIGHT);
    control.ProcessButtonUp(20, 10, 0, tamsel7::MouseButton::RIGHT);
    content().EnableRubberRect(false);
    click(20, 10);
    EXPECT_EQ(told, "");
    content().EnableRubberRect(true);
    click(20, 10);
    EXPECT_EQ(told, "start 20,10 start 20,10 finish 20,10 20,10 ")
        << "by the signal of the press, and again because nobody took it; also without a move";
    EXPECT_FALSE(rubber.dragging);
}

TEST_F(RubberRectEx, APointerOutsideScrollsByItsDistance) {
    viewer->SetScale(2);
    look_at(100, 100);
    paint();
    press(20, 10);
    struct {
        const char* name;
        tamsel7::point<int> to;
        const char* start;
        const char* told;
    } const moves[] = {
        {"beyond the right side", {220, 50}, "110,100", "to 220,125 "},
        {"the same place again", {220, 51}, "120,100", "to 230,125.5 "},
        {"beyond the corner", {-20, -40}, "110,80", "to 100,60 "},
        {"inside", {50, 50}, "110,80", "to 135,105 "},
        {"far beyond, no further than the range", {2200, 50}, "300,80", "to 1400,105 "},
        {"at the end of the range", {240, 50}, "300,80", "to 420,105 "},
    };
    for (const auto& m : moves) {
        told.clear();
        move(m.to.x, m.to.y);
        EXPECT_EQ(start(), m.start) << m.name;
        EXPECT_EQ(told, m.told) << m.name;
        frames();
    }
}

TEST_F(RubberRectEx, AScrolledFrameIsErasedBeforeTheViewIsPainted) {
    look_at(100, 100);
    paint();
    press(20, 10);
    move(50, 30);
    frames();
    move(210, 30);
    painter.take();
    control.ProcessPaint(&painter);
    std::string order;
    for (const std::string& line : painter.take()) {
        order += line.rfind("DrawFocusFrame", 0) == 0 ? "[" + line.substr(15) + "]"
                 : line.rfind("FillRect", 0) == 0     ? "fill "
                                                      : "";
    }
    EXPECT_EQ(order.substr(order.find('[')), "[120,110,150,130]fill [120,110,320,130]");
    content().HandleMouseLeave(&content());
    EXPECT_EQ(frames(), list{"120,110,320,130"}) << "all is painted anew: nothing to erase";
}

TEST_F(RubberRectEx, TheFrameStopsLeftOfZeroButNotAboveIt) {
    look_at(-50, -50);
    press(80, 80);
    told.clear();
    move(20, 20);
    EXPECT_EQ(told, "to 0,-30 ") << "x is taken up to the least positive number";
}

TEST_F(RubberRectEx, WithoutModelsThePointerStaysInside) {
    rubber.SetHorzScroll(nullptr);
    press(20, 10);
    told.clear();
    move(250, 120);
    EXPECT_EQ(told, "to 200,140 ") << "the view has scrolled downwards only";
    rubber.SetVertScroll(nullptr);
    move(-10, -30);
    EXPECT_EQ(told.substr(11), "to 0,20 ");
}

TEST_F(RubberRectEx, ATrackerFollowsItsParent) {
    auto* const other =
        new brevolt7::CVisualElement(control.GetRoot(), {10, 10}, brevolt7::Alignment::ALIGN_NONE);
    rubber.SetParent(other);
    click(20, 10);
    EXPECT_EQ(told, "");
    other->OnButtonDown(other, 3, 4, 0, tamsel7::MouseButton::LEFT);
    EXPECT_EQ(told, "start 3,4 ");
    rubber.HandleMouseMove(5, 6, 0, tamsel7::MouseButton::LEFT);
    rubber.SetParent(&content());
    rubber.HandleButtonUp(5, 6, 0, tamsel7::MouseButton::LEFT);
    EXPECT_EQ(told.substr(0, 17), "start 3,4 to 5,6 ");
}

} // namespace
