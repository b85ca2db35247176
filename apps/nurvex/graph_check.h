#pragma once

#include <cstddef>
#include <istream>
#include <string>
#include <vector>

namespace nurvex {

/// What is wrong with a text graph, and what to do about it.
struct Fault {
    std::size_t line; ///< counted from 1
    std::string message;
};

/// How many things a text graph holds.
struct GraphSize {
    std::size_t nodes = 0; ///< clusters too
    std::size_t clusters = 0;
    std::size_t edges = 0;

    bool operator==(const GraphSize&) const = default;
};

/// Finds what keeps a text graph from being loaded, or from being loaded as it was meant. Where
/// there are no faults, `size` is that of the graph that loading would give.
///
/// A graph without faults loads. One with faults is not to be loaded: loading may follow some of
/// them for ever. Nothing that the stream holds makes the check itself fail or run on.
///
/// Order   by line; of more than fifty faults, the last entry tells how many are left out
std::vector<Fault> check_text_graph(std::istream& in, GraphSize* size = nullptr);

} // namespace nurvex
