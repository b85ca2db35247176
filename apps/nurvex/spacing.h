#pragma once

namespace nurvex {

/// The distances that a drawing keeps. A little more room than the layout takes by itself: arrow
/// heads are 7 long and stand on the straight piece beside a node, and lines side by side are told
/// apart at a glance. Space: graph.
struct Spacing {
    static constexpr double MOST = 1000; ///< of each

    double level_gap = 36;
    double node_gap = 14;
    double edge_gap = 4;
    double edge_margin = 10;
};

} // namespace nurvex
