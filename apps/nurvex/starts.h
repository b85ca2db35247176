#pragma once

#include "nurvex7/model/node.h"

#include <vector>

namespace nurvex {

/// The leaves from which all others are reached along edges, as few as that takes: those that no
/// edge leads to, and one of each cycle that no edge leads into, the first of it. Edges of a leaf
/// to itself lead nowhere, and neither do those to and from clusters, which have no fold ports.
/// Hidden nodes count.
///
/// Order   that in which a walk through the clusters meets them
std::vector<nurvex7::Node> FindStarts(const nurvex7::Node& root);

/// Shows the starts and the clusters around them and hides all other nodes, which are no longer
/// selected then. Queues nothing.
void ShowOnlyStarts(const nurvex7::Node& root);

} // namespace nurvex
