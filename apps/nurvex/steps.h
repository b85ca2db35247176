#pragma once

#include "nurvex7/model/flags.h"
#include "nurvex7/platform/tamsel7/geometry.h"

#include <cstddef>
#include <string>
#include <vector>

namespace nurvex {

enum class Verb { FOLD, UNFOLD, HIDE, SHOW, ADD, LINK, REMOVE_NODE, REMOVE_EDGES, RESIZE };

/// One change of a graph. Nodes are named by their ids in the text graph.
struct Change {
    Verb verb = Verb::FOLD;
    int node = 0;
    int target = 0; ///< of LINK and REMOVE_EDGES
    int owner = 0;  ///< of ADD; 0 for none
    nurvex7::FoldDirection direction = nurvex7::FOLD_CHILDREN;
    std::string caption;
    tamsel7::size<double> size;
};

/// Changes that are laid out together.
struct Step {
    std::size_t number = 0; ///< counted from 1
    std::string text;       ///< as it was given, for messages and the report
    std::vector<Change> changes;
};

/// Reads lists of steps as they stand behind each --then.
/// Errors  a Failure that tells the step, what is wrong with it, and what to write instead
std::vector<Step> ReadSteps(const std::vector<std::vector<std::string>>& lists);

/// Ends the program for the sake of one step.
[[noreturn]] void RefuseStep(const Step& step, const std::string& reason);

} // namespace nurvex
