#pragma once

#include "tests/support/test_graph.h"

#include <string>
#include <vector>

namespace nurvex7::testing_support {

/// A drawing as text, one fact a line: `a 60x20 at 35,12`, then `a>b 95,22 100,22`. At most three
/// decimals; hidden nodes and their edges are left out. Order: nodes as added, then edges as added.
std::string drawing_text(const TestGraph& g);

/// One number of a drawing with the place where it stands.
struct Fact {
    std::string what;
    double value;
};

/// Everything that a layout writes: positions and sizes of all nodes and of the root, and the
/// break nodes of every edge, owner by owner.
std::vector<Fact> drawing_facts(const TestGraph& g);

/// The first difference between the drawings of two graphs of the same structure, to the last bit;
/// empty where they are equal.
std::string first_difference(const TestGraph& a, const TestGraph& b);
std::string first_difference(const std::vector<Fact>& a, const std::vector<Fact>& b);

} // namespace nurvex7::testing_support
