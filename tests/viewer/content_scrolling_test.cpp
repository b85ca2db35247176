#include "tests/support/viewer_window.h"

#include <limits>

namespace {

using namespace nurvex7;

struct ContentScrolling : tests::ViewerWindow {
    std::string range() const {
        using tests::text_of;
        return text_of(content().GetHorzFrom()) + ".." + text_of(content().GetHorzTo()) + " x " +
               text_of(content().GetVertFrom()) + ".." + text_of(content().GetVertTo());
    }
};

TEST_F(ContentScrolling, PixelsAndGraphCoordinates) {
    using pixel = tamsel7::point<int>;
    viewer->SetScale(2);
    look_at(10, 5);
    EXPECT_EQ(content().ConvertP2L({20, 10}), (tamsel7::point<double>{20, 10}));
    EXPECT_EQ(content().ConvertL2P({20, 10}), (pixel{20, 10}));
    EXPECT_EQ(content().ConvertL2P({19.99, 9.75}), (pixel{20, 9}))
        << "a hair below a pixel is on it, half a pixel is not";
    EXPECT_EQ(content().ConvertL2P({9.6, 4}), (pixel{0, -1})) << "towards 0";
    EXPECT_EQ(content().ConvertL2P({1e300, -1e300}),
              (pixel{std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}));
}

TEST_F(ContentScrolling, TheRangeGrowsAsFarAsTheViewStandsOutside) {
    place_root({10, 20, 410, 320});
    struct {
        const char* name;
        double x;
        double y;
        const char* range;
    } const steps[] = {
        {"inside", 50, 60, "10..410 x 20..320"},
        {"left of the root", -30, 60, "-30..410 x 20..320"},
        {"further left, and above", -50, -1, "-50..410 x -1..320"},
        {"back inside", 50, 60, "10..410 x 20..320"},
        {"beyond the far ends", 300, 300, "10..500 x 20..400"},
        {"a little back", 290, 290, "10..490 x 20..390"},
        {"left of the root from there", 0, 300, "0..410 x 20..400"},
        {"at the very corner, the margins stay", 10, 20, "10..410 x 20..400"},
        {"inside again", 11, 21, "10..410 x 20..320"},
    };
    for (const auto& step : steps) {
        look_at(step.x, step.y);
        EXPECT_EQ(range(), step.range) << step.name;
    }
}

TEST_F(ContentScrolling, AGraphIsCentredWhenItIsShown) {
    viewer->SetGraph(placed.graph);
    EXPECT_EQ(start(), "100,100");
    place_root({10, 0, 110, 40});
    viewer->SetScale(0.5);
    views.clear();
    viewer->SetGraph(placed.graph);
    EXPECT_EQ(start(), "-140,-80");
    EXPECT_EQ(range(), "-140..110 x -80..40") << "a view that is larger has no margin behind";
    EXPECT_EQ(views.back(), "-140,-80,260,120");
    EXPECT_EQ(extent_of_paint(), "[-140,-80,260,120] root");
}

TEST_F(ContentScrolling, OnlyScalesAboveZeroCount) {
    views.clear();
    for (const double value : {0.0, -2.0, std::numeric_limits<double>::quiet_NaN(),
                               std::numeric_limits<double>::infinity()}) {
        viewer->SetScale(value);
    }
    viewer->SetViewWidth(0);
    viewer->SetViewHeight(-1);
    content().SetHorzMeasure({0.0, 1});
    EXPECT_EQ(viewer->GetScale(), 1);
    EXPECT_TRUE(views.empty());

    look_at(30, 40);
    viewer->SetViewWidth(50);
    EXPECT_EQ(viewer->GetScale(), 4);
    EXPECT_EQ(views.back(), "30,40,80,65") << "the top left corner stays";
    viewer->SetViewHeight(50);
    EXPECT_EQ(viewer->GetScale(), 2);
    content().SetVertMeasure({4.0, 1});
    EXPECT_EQ(viewer->GetScale(), 0.25);
}

TEST_F(ContentScrolling, TheArrowKeysMoveByFourPixels) {
    viewer->SetScale(2);
    look_at(100, 100);
    click(1, 1); // takes the focus
    struct {
        int key;
        bool handled;
        const char* start;
    } const keys[] = {
        {brevolt7::KEY_LEFT, true, "102,100"},   {brevolt7::KEY_UP, true, "102,102"},
        {brevolt7::KEY_RIGHT, true, "100,102"},  {brevolt7::KEY_DOWN, true, "100,100"},
        {brevolt7::KEY_SPACE, false, "100,100"},
    };
    for (const auto& k : keys) {
        EXPECT_EQ(content().HandleKeyDown(0, k.key), k.handled) << k.key;
        EXPECT_EQ(start(), k.start) << k.key;
    }
    control.ProcessKeyDown(0, brevolt7::KEY_LEFT);
    EXPECT_EQ(start(), "102,100");
}

TEST_F(ContentScrolling, TheViewIsToldAgainWhereItsPlaceChanges) {
    views.clear();
    control.ProcessResize({300, 200});
    EXPECT_EQ(views.back(), "0,0,300,200");
    control.ProcessWheel(5, 5, 0, tamsel7::MouseButton::NONE, -brevolt7::WHEEL_NOTCH);
    EXPECT_EQ(views.back(), "0,48,300,248");
}

} // namespace
