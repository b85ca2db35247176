#pragma once

#include "apps/nurvex/drawing.h"
#include "apps/nurvex/numbered_graph.h"
#include "apps/nurvex/steps.h"

#include <cstddef>
#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace nurvex {

/// What stays and what moves from picture to picture.
class StepReport {
public:
    /// Looks at the drawing that the first step starts from.
    explicit StepReport(const Drawing& drawing);

    /// Compares the drawing with what it was before the step.
    void Add(const Step& step, const Drawing::Passage& passage, const Drawing& drawing,
             const NumberedGraph& graph);

    /// One line for each step, under a line of headings.
    void Print(std::ostream& out) const;

private:
    struct Place {
        int owner = 0;
        int level = -1;
        double y = 0; ///< graph
    };
    using Places = std::map<int, Place>; ///< by node id

    struct Row {
        std::string step;
        std::string laid_out;
        std::size_t old = 0;
        std::size_t kept_level = 0;
        std::size_t kept_order = 0;
        std::size_t moved = 0;
        double farthest = 0;
        std::size_t fresh = 0;
        double milliseconds = 0;
    };

    static Places places_in(const Drawing& drawing);
    static std::size_t count_kept_order(const Places& before, const Places& after);

    Places last;
    std::vector<Row> rows;
};

} // namespace nurvex
