// The time of each phase, divided by n log n: a phase that grows no faster shows a number that does
// not rise from size to size.

#include <benchmark/benchmark.h>

#include <chrono>
#include <cmath>
#include <string>
#include <utility>

#include "families.h"

namespace {

using nurvex7::Node;

/// Looks at the clock between the phases.
class TimedLayout : public nurvex7::IncLayout {
public:
    TimedLayout() {
        serves_nests_flat = true;
        weave(make_phases, static_cast<phase_t>(&TimedLayout::look));
        weave(update_phases, static_cast<phase_t>(&TimedLayout::look));
    }

    void Make(Node owner) override {
        begin();
        IncLayout::Make(owner);
    }
    void Update(Node owner) override {
        begin();
        IncLayout::Update(owner);
    }

    std::vector<double> seconds = std::vector<double>(7); ///< by place in the list

private:
    using clock = std::chrono::steady_clock;

    static void weave(std::vector<phase_t>& phases, phase_t look) {
        std::vector<phase_t> woven = {look};
        for (const phase_t phase : phases) {
            woven.insert(woven.end(), {phase, look});
        }
        phases.swap(woven);
    }

    void begin() { looks = 0; }

    void look() {
        const clock::time_point now = clock::now();
        if (looks > 0) {
            seconds[looks - 1] += std::chrono::duration<double>(now - last).count();
        }
        looks = looks < seconds.size() ? looks + 1 : 0;
        last = clock::now();
    }

    std::size_t looks = 0;
    clock::time_point last;
};

using names_t = std::vector<const char*>;

const names_t MAKE = {"determine_levels", "place_nodes_on_levels", "barycentric_adjust",
                      "initial_y_coords", "force_adjust",          "x_coords",
                      "epilogue"};
const names_t UPDATE = {
    "restore_old_levels", "make_y_shifts", "new_nodes_levels", "place_nodes_on_levels",
    "new_nodes_y_coords", "x_coords",      "epilogue"};

/// Counters in nanoseconds for each node and each doubling of their number.
void report(benchmark::State& state, const TimedLayout& layout, const names_t& names) {
    const auto n = static_cast<double>(state.range(0));
    const double unit = n * std::log2(n) * static_cast<double>(state.iterations()) * 1e-9;
    for (std::size_t i = 0; i < names.size(); ++i) {
        state.counters[std::to_string(i + 1) + "_" + names[i]] = layout.seconds[i] / unit;
    }
    state.SetComplexityN(state.range(0));
}

template <families::Bench (*family)(std::size_t)>
void PhasesOfMake(benchmark::State& state) {
    TimedLayout layout;
    families::Bench b = family(static_cast<std::size_t>(state.range(0)));
    b.graph->SetDefaultLayout(nurvex7::graph_ptr2<nurvex7::ILayout>(&layout, /*owns=*/false));
    for (auto _ : state) {
        layout.Make(b.graph->GetRoot());
    }
    report(state, layout, MAKE);
}

template <families::Bench (*family)(std::size_t)>
void PhasesOfUpdate(benchmark::State& state) {
    TimedLayout layout;
    families::Bench b = family(static_cast<std::size_t>(state.range(0)));
    b.graph->SetDefaultLayout(nurvex7::graph_ptr2<nurvex7::ILayout>(&layout, /*owns=*/false));
    Node root = b.graph->GetRoot();
    b.graph->RecalculateLayout(nullptr);
    std::fill(layout.seconds.begin(), layout.seconds.end(), 0);
    for (auto _ : state) {
        state.PauseTiming();
        nurvex7::NodeSet owned = root.GetOwned();
        owned.GetItem(owned.GetCount() / 2).LinkTo(root.AddNode());
        root.UpdateLayout();
        state.ResumeTiming();
        b.graph->RecalculateLayout(nullptr);
    }
    report(state, layout, UPDATE);
}

void sizes(benchmark::internal::Benchmark* b) {
    b->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
    b->Complexity(benchmark::oNLogN);
}

} // namespace

BENCHMARK(PhasesOfMake<families::sparse>)->Apply(sizes);
BENCHMARK(PhasesOfMake<families::tree>)->Apply(sizes);
BENCHMARK(PhasesOfMake<families::nested>)->Apply(sizes);
BENCHMARK(PhasesOfUpdate<families::sparse>)->Apply(sizes);
