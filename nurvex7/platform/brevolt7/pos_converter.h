#pragma once

#include "nurvex7/export.h"
#include "nurvex7/platform/tamsel7/geometry.h"

namespace brevolt7 {

/// Bends the corners of a rubber rectangle: to the full height, the full width, or not at all.
class NURVEX7_API IPosConverter {
public:
    virtual ~IPosConverter();
    /// The corner where the drag began. Space: pixels of the element with the content `area`.
    virtual void ConvertStart(int* x, int* y, const tamsel7::rectangle<int>& area) = 0;
    /// The same in logical coordinates; (cx, cy) is the content's top left corner.
    virtual void ConvertStart(double* x, double* y, double cx, double cy) = 0;
    /// The corner under the pointer. Space: pixels.
    virtual void ConvertCur(int* x, int* y, const tamsel7::rectangle<int>& area) = 0;
};

/// Follows the pointer along x, and takes the full height.
class NURVEX7_API CXPosConverter : public IPosConverter {
public:
    void ConvertStart(int* x, int* y, const tamsel7::rectangle<int>& area) override;
    void ConvertStart(double* x, double* y, double cx, double cy) override;
    void ConvertCur(int* x, int* y, const tamsel7::rectangle<int>& area) override;
};

/// Follows the pointer along y, and takes the full width.
class NURVEX7_API CYPosConverter : public IPosConverter {
public:
    void ConvertStart(int* x, int* y, const tamsel7::rectangle<int>& area) override;
    void ConvertStart(double* x, double* y, double cx, double cy) override;
    void ConvertCur(int* x, int* y, const tamsel7::rectangle<int>& area) override;
};

/// Follows the pointer in both directions.
class NURVEX7_API CBothPosConverter : public IPosConverter {
public:
    void ConvertStart(int* x, int* y, const tamsel7::rectangle<int>& area) override;
    void ConvertStart(double* x, double* y, double cx, double cy) override;
    void ConvertCur(int* x, int* y, const tamsel7::rectangle<int>& area) override;
};

} // namespace brevolt7
