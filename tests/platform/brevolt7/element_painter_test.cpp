#include "nurvex7/platform/brevolt7/coord_map.h"
#include "nurvex7/platform/brevolt7/element_painter.h"
#include "tests/support/recording_painter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace brevolt7 {
namespace {

using Lines = std::vector<std::string>;
using MapMode = tamsel7::IPainter::MapMode;

/// An element of 40 by 30 pixels at (100, 50) of its window, of which the left half shows.
TEST(ElementPainter, ShiftsCoordinatesAndNarrowsClips) {
    tests::RecordingPainter window;
    {
        ElementPainter painter(window, {100, 50}, {0, 0, 40, 30}, {0, 0, 20, 30},
                               {-10, -10, 20, 35});
        EXPECT_EQ(window.take(),
                  (Lines{"SetCoordSystem 3 0,0,40,30 on 100,50,40,30", "SetClipRect 0,0,20,30"}));
        painter.BeginPaint(tamsel7::IPainter::StdSettings::STANDARD);
        EXPECT_TRUE(painter.paint_started);
        EXPECT_EQ(painter.GetDrawArea(), (tamsel7::rectangle<int>{0, 0, 40, 30}));
        window.take();

        tamsel7::IPainter::CoordInfo info;
        MapMode mode = MapMode::MAP_LOGICAL;
        painter.GetCoordSystem(mode, &info);
        EXPECT_EQ(mode, MapMode::MAP_DEVICE);
        info.logical_x = 7;
        info.logical_width = 80;
        info.logical_height = 60;
        painter.SetCoordSystem(MapMode::MAP_LOGICAL, &info);
        EXPECT_EQ(window.take(), Lines{"SetCoordSystem 3 7,0,80,60 on 100,50,40,30"});
        tamsel7::IPainter::CoordInfo read;
        painter.GetCoordSystem(mode, &read);
        EXPECT_EQ(read.device_x, 0) << "the element's pixels begin at 0, wherever it stands";
        info.logical_width = 0; // ignored, as painters do
        painter.SetCoordSystem(MapMode::MAP_LOGICAL, &info);
        EXPECT_EQ(window.take(), Lines{});

        painter.SetClipRect(9, 2, 17, 200, false); // pixels 1,1 to 5,100
        EXPECT_EQ(window.take(), Lines{"SetClipRect 9,2,17,70"});
        painter.SetClipRect(0, 0, 11, 10, true);
        EXPECT_EQ(window.take(), Lines{"SetClipRect 9,2,11,10"});
        painter.SetClipRect(500, 0, 600, 10, false); // nothing of it shows
        EXPECT_EQ(window.take(), Lines{"SetClipRect 500,0,500,10"});
        painter.CancelClip();
        EXPECT_EQ(window.take(), Lines{"SetClipRect 7,0,47,60"});
        painter.EndPaint();
        window.take();
    }
    EXPECT_EQ(window.take(), (Lines{"CancelClip", "SetCoordSystem 0 0,0,0,0 on 0,0,0,0"}));
}

TEST(ElementPainter, TellsWhetherAClipWentBeyondTheElement) {
    tests::RecordingPainter window;
    const pixel_rect bounds{0, 0, 10, 10};
    ElementPainter painter(window, {5, 5}, bounds, bounds, {-5, -5, 50, 50});
    painter.SetClipRect(2, 2, 10, 10, false);
    EXPECT_FALSE(painter.HasPaintedOutside());
    painter.SetClipRect(2, 2, 11, 10, false);
    EXPECT_TRUE(painter.HasPaintedOutside());
}

} // namespace
} // namespace brevolt7
