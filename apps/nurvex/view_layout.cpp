#include "apps/nurvex/view_layout.h"

#include <utility>

namespace nurvex {

using nurvex7::Node;

/// Adds the time of an outermost piece of work; what it serves inside is part of that.
class ViewLayout::Stopwatch {
public:
    explicit Stopwatch(ViewLayout& given) : layout(given) { ++layout.depth; }
    Stopwatch(const Stopwatch&) = delete;
    Stopwatch& operator=(const Stopwatch&) = delete;
    ~Stopwatch() {
        if (--layout.depth == 0) {
            layout.spent += std::chrono::steady_clock::now() - started;
        }
    }

private:
    ViewLayout& layout;
    const std::chrono::steady_clock::time_point started = std::chrono::steady_clock::now();
};

ViewLayout::ViewLayout(const Spacing& spacing)
    : SeriesLayout(spacing.level_gap, spacing.node_gap, spacing.edge_gap, spacing.edge_margin) {
    count_between(make_phases);
}

void ViewLayout::count_between(std::vector<phase_t>& phases) {
    std::vector<phase_t> mixed;
    for (const phase_t phase : phases) {
        mixed.push_back(static_cast<phase_t>(&ViewLayout::count_step));
        mixed.push_back(phase);
    }
    phases = mixed;
}

void ViewLayout::count_step() {
    ++steps_done;
}

void ViewLayout::checkpoint() {
    if (pause) {
        pause(steps_done);
    }
}

void ViewLayout::SetPause(Pause taken) {
    pause = std::move(taken);
    steps_done = 0;
}

double ViewLayout::TakeMilliseconds() {
    return std::exchange(spent, std::chrono::duration<double, std::milli>(0)).count();
}

void ViewLayout::Make(Node owner) {
    const Stopwatch watch(*this);
    SeriesLayout::Make(owner);
}

void ViewLayout::Update(Node owner) {
    const Stopwatch watch(*this);
    SeriesLayout::Update(owner);
}

void ViewLayout::Resize(Node owner) {
    const Stopwatch watch(*this);
    SeriesLayout::Resize(owner);
}

} // namespace nurvex
