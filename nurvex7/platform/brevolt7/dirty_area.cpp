#include "nurvex7/platform/brevolt7/dirty_area.h"

#include <algorithm>
#include <cstddef>

namespace brevolt7 {

namespace {

/// More pieces than this become one: a list that grows costs more than painting a little too much.
constexpr std::size_t MOST_PIECES = 6;

/// The borders of all pieces along one axis, each once, in ascending order.
std::vector<int> borders(const std::vector<pixel_rect>& pieces, int pixel_rect::*low,
                         int pixel_rect::*high) {
    std::vector<int> all;
    for (const pixel_rect& r : pieces) {
        all.push_back(r.*low);
        all.push_back(r.*high);
    }
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());
    return all;
}

bool is_clean(const std::vector<pixel_rect>& pieces, const pixel_rect& r) {
    return std::all_of(pieces.begin(), pieces.end(),
                       [&](const pixel_rect& piece) { return is_empty(intersection(piece, r)); });
}

long long area_of(const pixel_rect& r) {
    return is_empty(r) ? 0 : static_cast<long long>(r.right - r.left) * (r.bottom - r.top);
}

} // namespace

bool is_empty(const pixel_rect& r) {
    return r.left >= r.right || r.top >= r.bottom;
}

pixel_rect intersection(const pixel_rect& a, const pixel_rect& b) {
    const pixel_rect common{std::max(a.left, b.left), std::max(a.top, b.top),
                            std::min(a.right, b.right), std::min(a.bottom, b.bottom)};
    return is_empty(common) ? pixel_rect{} : common;
}

pixel_rect united(const pixel_rect& a, const pixel_rect& b) {
    if (is_empty(a)) {
        return b;
    }
    if (is_empty(b)) {
        return a;
    }
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

bool is_inside(const pixel_rect& r, const tamsel7::point<int>& p) {
    return p.x >= r.left && p.x < r.right && p.y >= r.top && p.y < r.bottom;
}

bool contains(const pixel_rect& outer, const pixel_rect& inner) {
    return outer.left <= inner.left && outer.top <= inner.top && outer.right >= inner.right &&
           outer.bottom >= inner.bottom;
}

pixel_rect moved(const pixel_rect& r, int dx, int dy) {
    return {r.left + dx, r.top + dy, r.right + dx, r.bottom + dy};
}

tamsel7::rectangle<double> to_doubles(const pixel_rect& r) {
    return {static_cast<double>(r.left), static_cast<double>(r.top), static_cast<double>(r.right),
            static_cast<double>(r.bottom)};
}

void DirtyArea::Add(const pixel_rect& r) {
    if (is_empty(r) || std::any_of(pieces.begin(), pieces.end(),
                                   [&](const pixel_rect& piece) { return contains(piece, r); })) {
        return;
    }
    std::erase_if(pieces, [&](const pixel_rect& piece) { return contains(r, piece); });
    pieces.push_back(r);
    if (pieces.size() > MOST_PIECES) {
        pieces = {GetExtent()};
    }
}

void DirtyArea::Add(const DirtyArea& other) {
    for (const pixel_rect& piece : other.pieces) {
        Add(piece);
    }
}

void DirtyArea::Move(int dx, int dy) {
    for (pixel_rect& piece : pieces) {
        piece = moved(piece, dx, dy);
    }
}

void DirtyArea::ClipTo(const pixel_rect& r) {
    for (pixel_rect& piece : pieces) {
        piece = intersection(piece, r);
    }
    std::erase_if(pieces, is_empty);
}

pixel_rect DirtyArea::GetExtent() const {
    pixel_rect extent;
    for (const pixel_rect& piece : pieces) {
        extent = united(extent, piece);
    }
    return extent;
}

pixel_rect DirtyArea::GetLargestClean() const {
    const std::vector<int> xs = borders(pieces, &pixel_rect::left, &pixel_rect::right);
    const std::vector<int> ys = borders(pieces, &pixel_rect::top, &pixel_rect::bottom);
    pixel_rect best;
    for (std::size_t x1 = 0; x1 < xs.size(); ++x1) {
        for (std::size_t x2 = x1 + 1; x2 < xs.size(); ++x2) {
            for (std::size_t y1 = 0; y1 < ys.size(); ++y1) {
                for (std::size_t y2 = y1 + 1; y2 < ys.size(); ++y2) {
                    const pixel_rect r{xs[x1], ys[y1], xs[x2], ys[y2]};
                    if (area_of(r) > area_of(best) && is_clean(pieces, r)) {
                        best = r;
                    }
                }
            }
        }
    }
    return best;
}

} // namespace brevolt7
