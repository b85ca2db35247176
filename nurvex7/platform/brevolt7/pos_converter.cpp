#include "nurvex7/platform/brevolt7/pos_converter.h"

namespace brevolt7 {

IPosConverter::~IPosConverter() = default;

void CXPosConverter::ConvertStart(int* /*x*/, int* y, const tamsel7::rectangle<int>& area) {
    *y = area.top;
}

void CXPosConverter::ConvertStart(double* /*x*/, double* y, double /*cx*/, double cy) {
    *y = cy;
}

void CXPosConverter::ConvertCur(int* /*x*/, int* y, const tamsel7::rectangle<int>& area) {
    *y = area.bottom;
}

void CYPosConverter::ConvertStart(int* x, int* /*y*/, const tamsel7::rectangle<int>& area) {
    *x = area.left;
}

void CYPosConverter::ConvertStart(double* x, double* /*y*/, double cx, double /*cy*/) {
    *x = cx;
}

void CYPosConverter::ConvertCur(int* x, int* /*y*/, const tamsel7::rectangle<int>& area) {
    *x = area.right;
}

void CBothPosConverter::ConvertStart(int* /*x*/, int* /*y*/,
                                     const tamsel7::rectangle<int>& /*area*/) {}

void CBothPosConverter::ConvertStart(double* /*x*/, double* /*y*/, double /*cx*/, double /*cy*/) {}

void CBothPosConverter::ConvertCur(int* /*x*/, int* /*y*/,
                                   const tamsel7::rectangle<int>& /*area*/) {}

} // namespace brevolt7
