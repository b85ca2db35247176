#include "nurvex7/platform/brevolt7/dirty_area.h"
#include "nurvex7/platform/brevolt7/invalid_region.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace brevolt7 {
namespace {

constexpr int SIDE = 12;
using Pixels = std::vector<bool>;

void mark(Pixels& pixels, const pixel_rect& r) {
    for (int y = std::max(0, r.top); y < std::min(SIDE, r.bottom); ++y) {
        for (int x = std::max(0, r.left); x < std::min(SIDE, r.right); ++x) {
            pixels[static_cast<std::size_t>(y * SIDE + x)] = true;
        }
    }
}

bool any_in(const Pixels& pixels, const pixel_rect& r) {
    Pixels inside(pixels.size());
    mark(inside, r);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        if (pixels[i] && inside[i]) {
            return true;
        }
    }
    return false;
}

/// The pieces of an area to paint cover every dirty pixel once, none of them lies outside, and what
/// is spared is the largest clean rectangle: against plain pixels.
TEST(DirtyArea, ThePiecesOutsideTheCleanRectangleCoverWhatIsDirty) {
    for (unsigned seed = 1; seed <= 150; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        const auto pick = [&](int from, int to) {
            return std::uniform_int_distribution<int>(from, to)(random);
        };
        DirtyArea area;
        Pixels dirty(SIDE * SIDE);
        for (int i = pick(0, 5); i > 0; --i) {
            const int x = pick(0, SIDE - 1);
            const int y = pick(0, SIDE - 1);
            const pixel_rect r{x, y, pick(x, SIDE), pick(y, SIDE)};
            area.Add(r);
            mark(dirty, r);
        }
        const pixel_rect extent = area.GetExtent();
        const pixel_rect clean = area.GetLargestClean();
        EXPECT_EQ(area.IsEmpty(), std::count(dirty.begin(), dirty.end(), true) == 0);
        EXPECT_FALSE(any_in(dirty, clean));
        EXPECT_TRUE(is_empty(clean) || contains(extent, clean));

        Pixels painted(SIDE * SIDE);
        const auto as_double = [](const pixel_rect& r) {
            return tamsel7::rectangle<double>{1.0 * r.left, 1.0 * r.top, 1.0 * r.right,
                                              1.0 * r.bottom};
        };
        const CInvalidRegion region(as_double(extent), as_double(clean));
        for (int i = 0; i < region.count; ++i) {
            const tamsel7::rectangle<double> r = region[i];
            const pixel_rect piece{static_cast<int>(r.left), static_cast<int>(r.top),
                                   static_cast<int>(r.right), static_cast<int>(r.bottom)};
            EXPECT_FALSE(is_empty(piece));
            EXPECT_TRUE(contains(extent, piece));
            EXPECT_FALSE(any_in(painted, piece)) << "two pieces overlap";
            mark(painted, piece);
        }
        for (std::size_t i = 0; i < dirty.size(); ++i) {
            ASSERT_TRUE(painted[i] || !dirty[i]) << "a dirty pixel is left out";
        }
        for (int x = extent.left; x < extent.right; ++x) {
            for (int y = extent.top; y < extent.bottom; ++y) {
                const int width = clean.right - clean.left;
                const int height = clean.bottom - clean.top;
                const pixel_rect larger{x, y, x + width + 1, y + height};
                ASSERT_TRUE(height == 0 || !contains(extent, larger) || any_in(dirty, larger))
                    << "there is a larger clean rectangle";
            }
        }
    }
}

TEST(DirtyArea, ManyPiecesBecomeOne) {
    DirtyArea area;
    for (int i = 0; i < 20; ++i) {
        area.Add({3 * i, 0, 3 * i + 1, 1 + i});
    }
    EXPECT_EQ(area.GetExtent(), (pixel_rect{0, 0, 58, 20}));
    area.ClipTo({10, 5, 12, 6});
    area.Move(-10, 1);
    EXPECT_EQ(area.GetExtent(), (pixel_rect{0, 6, 2, 7}));
}

TEST(DirtyArea, NothingIsToBePaintedInAnEmptyRectangle) {
    EXPECT_EQ(CInvalidRegion({5, 5, 5, 9}, {}).count, 0);
    EXPECT_EQ(CInvalidRegion({0, 0, 4, 4}, {0, 0, 4, 4}).count, 0);
    EXPECT_EQ(CInvalidRegion({0, 0, 4, 4}, {-1, -1, 9, 9}).count, 0);
    EXPECT_EQ(CInvalidRegion({0, 0, 4, 4}, {4, 0, 9, 4}).count, 1);
}

} // namespace
} // namespace brevolt7
