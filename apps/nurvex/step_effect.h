#pragma once

#include "apps/nurvex/numbered_graph.h"
#include "apps/nurvex/steps.h"

#include <utility>
#include <vector>

namespace nurvex {

/// What is to be done about a drawing after a step.
struct StepEffect {
    /// Owners with something new, gone, hidden or shown directly inside; each of them once.
    /// Order   innermost first
    std::vector<nurvex7::Node> owners;
    /// The nodes that have been given a size, with that size.
    std::vector<std::pair<nurvex7::Node, tamsel7::size<double>>> sizes;
};

/// Carries out a step on a graph. Of the graph's duties, all that a step could break are looked at
/// first, change by change.
///
/// Queues  UpdateLayout of the owner of a node that is folded or unfolded, nothing else
/// Errors  a Failure that names the step; the changes before the one at fault have been made then
StepEffect ApplyStep(const Step& step, NumberedGraph& graph);

} // namespace nurvex
