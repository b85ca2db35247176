#pragma once

#include "apps/nurvex/command_line.h"
#include "apps/nurvex/graph_file.h"
#include "apps/nurvex/picture_file.h"
#include "apps/nurvex/progress.h"
#include "apps/nurvex/step_report.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace nurvex {

/// The pictures of a graph that is changed step by step: all of them where the name of the output
/// has a `%`, else the last alone.
class Series {
public:
    /// `count` is that of the steps and one more for the graph as it is at first.
    /// Errors  a Failure where a picture could not be written
    Series(const std::string& output, std::size_t count);

    /// Errors  a Failure where a picture would take the place of this input
    void Spare(const std::string& input) const;

    /// Takes all steps on a graph that is not laid out: a step with a fault is found at once.
    /// Errors  a Failure that names the step
    static void Rehearse(const GraphFile& file, const std::vector<Step>& steps);

    /// Draws the pictures and puts them in place once all are complete. Those of a series show the
    /// same part of the plane, so that they can be flipped through.
    ///
    /// Gives a remark for the user; empty mostly.
    /// Errors  a Failure where a picture is too large or cannot be written
    std::string Draw(const GraphFile& file, const DrawOptions& options, Progress& progress);

    /// What has stayed in its place, step by step. Duty: it has been drawn.
    const StepReport& GetReport() const { return *report; }

private:
    /// Called with the number of a picture and the drawing for it.
    using Visit = std::function<void(std::size_t, Drawing&)>;

    void follow(const GraphFile& file, const DrawOptions& options, const Visit& visit);
    std::string write(std::size_t number, const Drawing& drawing, const GraphFile& file,
                      const DrawOptions& options);

    bool numbered;
    std::vector<PictureFile> pictures;
    std::optional<StepReport> report;
};

} // namespace nurvex
