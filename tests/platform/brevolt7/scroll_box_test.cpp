#include "nurvex7/platform/brevolt7/scroll_bar.h"
#include "nurvex7/platform/brevolt7/scroll_box.h"
#include "tests/support/stage.h"

#include <gtest/gtest.h>

#include <string>

namespace brevolt7 {
namespace {

using tests::Log;

/// A pane of which 400 by 300 units can be seen, at a scale, with a model for each direction.
class Pane : public CCentralPart, public IVertSimpleScrollModel, public IHorzSimpleScrollModel {
public:
    double scale = 1;
    double x = 0;
    double y = 0;
    int places = 0;
    double width = 400;

    explicit Pane(CVisualElement* box) : CCentralPart(box, {40, 40}, Alignment::ALIGN_FILL) {}

    double GetHorzFrom() const override { return 0; }
    double GetHorzTo() const override { return width; }
    void SetHorzStart(double start) override { x = start; }
    double GetHorzStart() const override { return x; }
    int GetHorzStepInPixels() const override { return 4; }
    void SetHorzMeasure(std::pair<double, int> m) override { scale = m.second / m.first; }
    std::pair<double, int> GetHorzMeasure() const override { return {1 / scale, 1}; }
    double GetVertFrom() const override { return 0; }
    double GetVertTo() const override { return 300; }
    void SetVertStart(double start) override { y = start; }
    double GetVertStart() const override { return y; }
    int GetVertStepInPixels() const override { return 4; }
    void SetVertMeasure(std::pair<double, int> m) override { scale = m.second / m.first; }
    std::pair<double, int> GetVertMeasure() const override { return {1 / scale, 1}; }
    void SetPos(const tamsel7::rectangle<int>& place, bool repaint) override {
        ++places;
        CCentralPart::SetPos(place, repaint);
    }
};

struct BoxStage : tests::Stage {
    BoxStage() : box(new CScrollBox(control->GetRoot(), {10, 10}, Alignment::ALIGN_FILL)) {
        pane = new Pane(box);
        box->SetVertScroll(static_cast<IVertSimpleScrollModel*>(pane));
        box->SetHorzScroll(static_cast<IHorzSimpleScrollModel*>(pane));
        pane->SetVertScroll(box->GetWrappedVertScroll());
        pane->SetHorzScroll(box->GetWrappedHorzScroll());
        box->SetCentralPane(pane);
        Pass();
    }
    void Pass() { control->ProcessPaint(&painter); }
    bool Key(int flags, int key) { return control->ProcessKeyDown(flags, key); }

    tests::RecordingPainter painter;
    CScrollBox* box;
    Pane* pane;
};

TEST(ScrollBox, BarsTakeRoomWhereTheyAreNeeded) {
    struct Case {
        const char* what;
        double scale;
        double width;
        int horz_policy;
        int vert_policy;
        tamsel7::size<int> pane;
    };
    const int bar = CScrollBar::THICKNESS;
    const Case cases[] = {
        // a window of 100 by 100
        {"all fits", 0.2, 400, 0, 0, {100, 100}},
        {"too wide", 0.28, 400, 0, 0, {100, 100 - bar}},
        {"both", 1, 400, 0, 0, {100 - bar, 100 - bar}},
        {"the bar below takes the room that the height needs",
         0.3,
         400,
         0,
         0,
         {100 - bar, 100 - bar}},
        {"the bar beside takes the room that the width needs",
         0.35,
         270,
         0,
         0,
         {100 - bar, 100 - bar}},
        {"hidden", 1, 400, 2, 2, {100, 100}},
        {"one hidden", 1, 400, 2, 0, {100 - bar, 100}},
        {"always", 0.1, 400, 1, 1, {100 - bar, 100 - bar}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        BoxStage stage;
        stage.box->horz_bar_policy = c.horz_policy;
        stage.box->vert_bar_policy = c.vert_policy;
        stage.pane->scale = c.scale;
        stage.pane->width = c.width;
        stage.Pass();
        EXPECT_EQ(stage.pane->GetBounds(), (pixel_rect{0, 0, c.pane.width, c.pane.height}));
        const int places = stage.pane->places;
        stage.pane->OnChange(stage.pane, UpdateType::UPDATE_REPAINT);
        stage.Pass();
        EXPECT_EQ(stage.pane->places, places) << "a pass without changes places the pane";
    }
}

/// Whole pixels are moved, everything else is painted anew.
TEST(ScrollBox, AWrappedModelScrollsThePixelsOfThePane) {
    BoxStage stage;
    stage.window.can_scroll = true;
    stage.pane->scale = 2;
    struct Case {
        double start;
        Log moved;
    };
    const Case cases[] = {
        {2.5, {"ScrollPixels 0,0,86,86 by -5,0"}}, {2.5, {}}, {2.75, {}},
        {0.25, {"ScrollPixels 0,0,86,86 by 5,0"}}, {300, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.start);
        stage.Pass();
        stage.window.take();
        const bool still = c.start == stage.pane->x;
        stage.window.repaint_wanted = false;
        stage.box->GetWrappedHorzScroll()->SetStart(c.start);
        EXPECT_EQ(stage.window.take(), c.moved);
        EXPECT_EQ(stage.pane->x, c.start);
        tests::RecordingPainter painter;
        const tamsel7::rectangle<double> area = stage.pane->GetDrawRect(&painter);
        const tamsel7::rectangle<double> valid = stage.pane->GetDrawValidRect(&painter);
        EXPECT_EQ(area == valid, still) << "what came into view is not invalid";
        EXPECT_EQ(area == (tamsel7::rectangle<double>{0, 0, 86, 86}), c.moved.empty());
    }
}

TEST(ScrollBox, TheUserScrollsInsideTheRange) {
    BoxStage stage; // a view of 86 by 86 on 400 by 300
    stage.Press(10, 10);
    stage.Release(10, 10);
    const auto wheel = [&](int flags, int distance) {
        return stage.control->ProcessWheel(10, 10, flags, tamsel7::MouseButton::NONE, distance);
    };
    struct Case {
        const char* what;
        std::function<bool()> act;
        bool handled;
        double x;
        double y;
    };
    const Case cases[] = {
        {"up at the top", [&] { return wheel(0, WHEEL_NOTCH); }, false, 0, 0},
        {"a notch down", [&] { return wheel(0, -WHEEL_NOTCH); }, true, 0, 48},
        {"half a notch along x", [&] { return wheel(FLAG_SHIFT, -WHEEL_NOTCH / 2); }, true, 24, 48},
        {"the wheel of others", [&] { return wheel(FLAG_CONTROL, -WHEEL_NOTCH); }, false, 24, 48},
        {"a page", [&] { return stage.Key(0, KEY_PAGE_DOWN); }, true, 24, 134},
        {"the end", [&] { return stage.Key(0, KEY_END); }, true, 24, 214},
        {"below the end", [&] { return wheel(0, -WHEEL_NOTCH); }, false, 24, 214},
        {"the end along x", [&] { return stage.Key(FLAG_CONTROL, KEY_END); }, true, 314, 214},
        {"a page back", [&] { return stage.Key(0, KEY_PAGE_UP); }, true, 314, 128},
        {"home", [&] { return stage.Key(0, KEY_HOME); }, true, 314, 0},
        {"another key", [&] { return stage.Key(0, KEY_ENTER); }, false, 314, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const int places = stage.pane->places;
        EXPECT_EQ(c.act(), c.handled);
        EXPECT_EQ(stage.pane->x, c.x);
        EXPECT_EQ(stage.pane->y, c.y);
        EXPECT_EQ(stage.pane->places - places, c.handled ? 1 : 0) << "the pane is not told";
    }
    // A view that stands outside of its range is not thrown back by a small step.
    stage.pane->y = 1000;
    EXPECT_TRUE(wheel(0, WHEEL_NOTCH));
    EXPECT_EQ(stage.pane->y, 952);
}

TEST(ScrollBox, TheThumbIsDraggedAndTheTrackTurnsPages) {
    BoxStage stage;
    const auto tick = [&](int times) {
        for (int i = 0; i < times; ++i) {
            stage.control->ProcessTimer(CWindowControl::TIMER_REPEAT);
        }
    };
    // The bar beside: 86 pixels for 300 units, so the thumb takes 25 and has a way of 61.
    stage.Press(93, 10);
    stage.Move(93, 10 + 61);
    EXPECT_EQ(stage.pane->y, 214);
    stage.Move(20, -500); // beside the bar, and far above
    EXPECT_EQ(stage.pane->y, 0);
    stage.Release(20, -500);
    EXPECT_EQ(stage.control->GetCapture(), nullptr);

    stage.Press(93, 80);
    EXPECT_EQ(stage.pane->y, 86);
    tick(8);
    EXPECT_EQ(stage.pane->y, 86) << "one press, one page";
    tick(10);
    EXPECT_EQ(stage.pane->y, 214) << "pages until the thumb is under the pointer";
    stage.Release(93, 80);
    stage.window.take();
    tick(20);
    stage.Press(10, 93);
    EXPECT_EQ(stage.pane->x, 0); // on the thumb of the bar below
    stage.control->ProcessCaptureLost();
    stage.Move(80, 93);
    EXPECT_EQ(stage.pane->x, 0) << "a drag that the desktop ended went on";
}

TEST(ScrollBox, APaneThatGoesTakesItsModelsAlong) {
    BoxStage stage;
    delete stage.pane;
    stage.Pass();
    EXPECT_FALSE(stage.Key(0, KEY_END));
    EXPECT_EQ(stage.box->GetWrappedVertScroll()->GetTo(), 0);
    EXPECT_EQ(stage.box->GetContentRect(), (pixel_rect{0, 0, 100, 100}));
}

} // namespace
} // namespace brevolt7
