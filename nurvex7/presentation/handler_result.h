#pragma once

#include "nurvex7/platform/tamsel7/geometry.h"

namespace nurvex7 {

/// What an event operation of a handler asks the viewer to do. Any value above
/// HANDLED_REPAINT_ALL means the same as it.
enum HandlerResult : int {
    HANDLED_NOTHING = 0,     ///< not handled
    HANDLED_DONE = 1,        ///< handled, nothing to repaint
    HANDLED_REDRAW_NODE = 2, ///< repaint this node only and renew the view
    HANDLED_RENEW = 3,       ///< renew the view without repainting everything
    HANDLED_REPAINT_ALL = 4  ///< drop pending partial repaints, renew the view, repaint everything
};

/// Outer size of a node and the point where what it owns begins. Space: graph.
struct SizeAndOrigin {
    tamsel7::size<double> size;
    tamsel7::point<double> origin;
};

} // namespace nurvex7
