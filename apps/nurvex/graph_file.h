#pragma once

#include "apps/nurvex/graph_check.h"
#include "nurvex7/foundation/graph_ptr2.h"
#include "nurvex7/model/graph.h"

#include <functional>
#include <string>
#include <vector>

namespace nurvex {

/// A text graph as a user names it, read once.
class GraphFile {
public:
    /// Reads the whole file, or standard input where the name is "-". Where it holds NUL bytes, it
    /// may be cut behind the first, which is a fault.
    /// Errors  a Failure where it cannot be read, or has more than two gigabytes
    explicit GraphFile(const std::string& given_name);

    /// Told what part of the text has been read. What it throws ends the reading.
    using Progress = std::function<void(double)>;

    /// All faults. Order: by line.
    std::vector<Fault> FindFaults(const Progress& progress = {}) const {
        return find_faults(nullptr, progress);
    }
    /// Looks for faults and tells each of them on standard error, with its line; `before_telling`
    /// is called first then. Gives how large the graph is. Errors  a Failure where there are any
    GraphSize Check(const std::function<void()>& before_telling = {}) const;

    /// A new graph at each call. Duty: the text has been checked.
    nurvex7::graph_ptr2<nurvex7::Graph> Load(const Progress& progress = {}) const;

    /// The text as it was read.
    const std::string& GetContent() const { return content; }
    /// The name in messages.
    const std::string& GetName() const { return name; }
    /// The name without directory and suffix.
    std::string GetTitle() const;

private:
    std::vector<Fault> find_faults(GraphSize* size, const Progress& progress) const;

    std::string name;
    std::string content;
};

} // namespace nurvex
