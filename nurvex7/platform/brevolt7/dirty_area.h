#pragma once

#include "nurvex7/platform/tamsel7/geometry.h"

#include <vector>

namespace brevolt7 {

using pixel_rect = tamsel7::rectangle<int>;

bool is_empty(const pixel_rect& r);
pixel_rect intersection(const pixel_rect& a, const pixel_rect& b);
/// The smallest rectangle around both; an empty one does not count.
pixel_rect united(const pixel_rect& a, const pixel_rect& b);
/// Left and top belong to a rectangle, right and bottom do not.
bool is_inside(const pixel_rect& r, const tamsel7::point<int>& p);
bool contains(const pixel_rect& outer, const pixel_rect& inner);
pixel_rect moved(const pixel_rect& r, int dx, int dy);
tamsel7::rectangle<double> to_doubles(const pixel_rect& r);

/// The pixels of an element that have to be painted, as a handful of rectangles.
class DirtyArea {
public:
    bool IsEmpty() const { return pieces.empty(); }
    void Add(const pixel_rect& r);
    void Add(const DirtyArea& other);
    void Clear() { pieces.clear(); }
    void Move(int dx, int dy);
    void ClipTo(const pixel_rect& r);
    /// The rectangle around all of it.
    pixel_rect GetExtent() const;
    /// The largest rectangle inside the extent that holds none of it; empty where there is none.
    pixel_rect GetLargestClean() const;

private:
    std::vector<pixel_rect> pieces;
};

} // namespace brevolt7
