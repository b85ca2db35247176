#pragma once

#include <string>
#include <vector>

namespace nurvex7::testing_support {

/// A golden drawing: a graph in the words of TestGraph, the words of later updates, the drawing.
///
/// The file is text: a line `graph <words>`, lines `update <words>` if any, and then the lines of
/// drawing_text. A person renews it, never the test itself.
struct Golden {
    std::string graph;
    std::vector<std::string> updates;
    std::string drawing;
};

/// Reads a file of tests/golden.
Golden read_golden(const std::string& name);

} // namespace nurvex7::testing_support
