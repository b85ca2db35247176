#pragma once

#include "nurvex7/model/fwd.h"
#include "nurvex7/platform/tamsel7/geometry.h"

namespace nurvex7 {

/// What the walks along the levels need of a node. The nodes of a level lie all over the memory; a
/// level of these lies in one piece. Space: owner-relative.
struct Standing {
    static constexpr double UNKNOWN = -1;

    double y = 0;
    double width = 0;      ///< of a real node
    double room = UNKNOWN; ///< along the level, see IncLayout::_get_height
    int number = -1;       ///< of a real node in its run, or of the edge of a dummy node
    bool is_dummy = false;
    bool goes_with_edge = false; ///< a dummy node that is placed together with its edge
};

/// A node on its way back to its level. Duty: both pointers are held by somebody else
struct Returning {
    Standing standing;
    IGraphVis* vis;
    INodeImpl* impl;
};

} // namespace nurvex7
