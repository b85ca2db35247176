#pragma once

#include "apps/nurvex/series_layout.h"
#include "apps/nurvex/spacing.h"

#include <chrono>
#include <functional>
#include <vector>

namespace nurvex {

/// The layout of a graph that is shown: tells how long its last work took and, while a graph is
/// being opened, lets others have their turn.
class ViewLayout : public SeriesLayout {
public:
    /// Called some times in a second while a layout is at work, with the number of its steps that
    /// are done. What it throws ends the layout; the graph has to be laid out anew then.
    using Pause = std::function<void(int)>;

    explicit ViewLayout(const Spacing& spacing);

    /// An empty one takes it away.
    void SetPause(Pause taken);
    /// The steps of laying out one owner anew.
    int CountSteps() const { return static_cast<int>(make_phases.size()) / 2; }
    /// What laying out took since the last question.
    double TakeMilliseconds();

    void Make(nurvex7::Node owner) override;
    void Update(nurvex7::Node owner) override;
    void Resize(nurvex7::Node owner) override;

private:
    class Stopwatch;

    void checkpoint() override;
    void count_step();
    void count_between(std::vector<phase_t>& phases);

    Pause pause;
    int depth = 0;
    int steps_done = 0;
    std::chrono::duration<double, std::milli> spent{0};
};

} // namespace nurvex
