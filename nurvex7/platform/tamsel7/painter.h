#pragma once

#include "nurvex7/export.h"
#include "nurvex7/platform/tamsel7/geometry.h"
#include "nurvex7/platform/tamsel7/tools.h"

#include <string>

namespace tamsel7 {

/// The drawing surface that the library draws and measures on. A host implements it.
///
/// Space   all coordinates are doubles in the painter's current coordinate system; fonts, pens and
///         arrow heads are in device units, so they keep their size at every zoom.
/// Duty    a painter starts with a readable font and a hollow brush: near zoom 1 a drawer installs
///         no font at all, and of the drawers of this library only CRectPortNodeDrawer sets a
///         brush.
class NURVEX7_API IPainter {
public:
    /// What maps logical onto device coordinates: the logical rectangle from the origin with the
    /// extent lies on the device rectangle.
    struct CoordInfo {
        int leading = 0; ///< the painter's own, given back as it came
        double logical_x = 0;
        double logical_y = 0;
        double logical_width = 0;
        double logical_height = 0;
        int device_x = 0;
        int device_y = 0;
        int device_width = 0;
        int device_height = 0;
    };

    /// MAP_LOGICAL maps a logical area onto a device rectangle by a CoordInfo.
    enum class MapMode : int { MAP_DEVICE = 0, MAP_LOGICAL = 3 };

    /// PLOT_ARROW takes two vertices and puts an arrow head at the second, on the segment from the
    /// first.
    enum class PlotType : int { PLOT_ARROW = 6 };

    /// Which tools a paint pass starts with.
    enum class StdSettings : int { STANDARD = 3 };

    /// GRADIENT_FORWARD runs from the first colour at the top to the second at the bottom.
    enum class GradientDirection : int { GRADIENT_FORWARD = 0 };

    /// Formats of DrawString in use: centred both ways; or at the top left inside the rectangle.
    static constexpr int FORMAT_CENTRED = 0x24;
    static constexpr int FORMAT_TOP_LEFT = 9;

    virtual ~IPainter();

    /// Bracket of a measuring or drawing pass.
    virtual void BeginPaint(StdSettings settings) = 0;
    virtual void EndPaint() = 0;

    /// True between BeginPaint and EndPaint.
    bool paint_started = false;

    virtual void SetCoordSystem(MapMode mode, CoordInfo* info) = 0;
    virtual void GetCoordSystem(MapMode& mode, CoordInfo* info) = 0;

    /// Restricts drawing to a rectangle; the library always passes false at the end.
    virtual void SetClipRect(double left, double top, double right, double bottom, bool add) = 0;
    /// Removes the clip; always the last step of a clipped drawing.
    virtual void CancelClip() = 0;
    /// The area of the element being painted. Space: pixel.
    virtual rectangle<int> GetDrawArea() = 0;

    virtual void SetPen(const pen& tool) = 0;
    virtual void SetBrush(const brush& tool) = 0;
    virtual void SetFont(const font& tool) = 0;
    virtual void SetTextColor(const _color& color) = 0;

    virtual void MoveTo(double x, double y) = 0;
    virtual void LineTo(double x, double y) = 0;
    virtual void BeginPlot(PlotType type) = 0;
    virtual void Vertex(double x, double y) = 0;
    virtual void EndPlot() = 0;
    /// Length and breadth of the next arrow heads. Space: pixel.
    virtual void SetArrowSize(size<int> head) = 0;

    /// Outline with the pen, filled with the brush.
    virtual void Rectangle(double left, double top, double right, double bottom) = 0;
    /// The same with rounded corners of the radii rx and ry.
    virtual void RoundRect(double left, double top, double right, double bottom, double rx,
                           double ry) = 0;
    /// Filled with the brush, no outline.
    virtual void FillRect(double left, double top, double right, double bottom) = 0;
    virtual void GradientFill(double left, double top, double right, double bottom,
                              const _color& from, const _color& to, unsigned long steps,
                              GradientDirection direction) = 0;

    /// A frame of one pixel that inverts what is under it: drawn again, it is gone.
    virtual void DrawFocusFrame(double left, double top, double right, double bottom) = 0;

    /// A text inside a rectangle, placed by a FORMAT_ value; the last argument is always -1.
    virtual void DrawString(const rectangle<double>& area, const std::string& text, int format,
                            int reserved) = 0;
    /// The size that DrawString would take for a text: with `tool`, or the current font where it
    /// is null. The library always passes null, -1, true, true.
    virtual size<double> GetTextSize(const std::string& text, const font* tool, int reserved,
                                     bool flag_1, bool flag_2) = 0;
};

} // namespace tamsel7
