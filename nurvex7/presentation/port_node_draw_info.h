#pragma once

#include "nurvex7/presentation/node_draw_info.h"

namespace nurvex7 {

/// The looks of a node with fold ports, all of them for the application to set, and the states that
/// its ports are drawn in.
struct NURVEX7_API CPortNodeDrawInfo : CNodeDrawInfo {
    tamsel7::_color port_closed_color{tamsel7::darken({255, 0, 0}, 10)}; ///< all are hidden
    tamsel7::_color port_open_color{tamsel7::darken({0, 255, 0}, 30)};   ///< all are shown
    tamsel7::_color port_partial_color{255, 204, 51};                    ///< some are shown
    int left_port_state = 0;                                             ///< bits of PortState
    int right_port_state = 0;                                            ///< bits of PortState
};

} // namespace nurvex7
