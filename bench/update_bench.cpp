// An Update after a small change, as a share of the full layout of the same graph in the same run.

#include "apps/nurvex/series_layout.h"
#include "nurvex7/model/folding.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstddef>
#include <memory>
#include <utility>

#include "families.h"

namespace {

using nurvex7::Node;

double seconds_of(auto f) {
    const auto start = std::chrono::steady_clock::now();
    f();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

families::Bench sparse_of(const benchmark::State& state) {
    return families::sparse(static_cast<std::size_t>(state.range(0)));
}

/// Measures `update` between changes; reports what a Make of the same graph took and the ratio, to
/// one that repeats the first and finds the structure known, and to the first.
template <typename Change>
void measure(benchmark::State& state, families::Bench b, Change change) {
    const double first_make = seconds_of([&] { b.graph->RecalculateLayout(nullptr); });
    const double make = seconds_of([&] {
        b.graph->GetRoot().MakeLayout();
        b.graph->RecalculateLayout(nullptr);
    });
    double updates = 0;
    for (auto _ : state) {
        state.PauseTiming();
        change(b, static_cast<int>(state.iterations()));
        b.graph->GetRoot().UpdateLayout();
        state.ResumeTiming();
        updates += seconds_of([&] { b.graph->RecalculateLayout(nullptr); });
    }
    const double update = updates / static_cast<double>(state.iterations());
    state.counters["make_s"] = make;
    state.counters["share_of_make"] = update / make;
    state.counters["share_of_first_make"] = update / first_make;
    state.SetComplexityN(state.range(0));
}

void OneNodeAdded(benchmark::State& state) {
    measure(state, sparse_of(state), [](families::Bench& b, int) {
        Node root = b.graph->GetRoot();
        nurvex7::NodeSet owned = root.GetOwned();
        owned.GetItem(owned.GetCount() / 2).LinkTo(root.AddNode());
    });
}

void fold_and_unfold(benchmark::State& state, families::Bench made) {
    bool folded = false;
    measure(state, std::move(made), [&](families::Bench& b, int) {
        nurvex7::NodeSet owned = b.graph->GetRoot().GetOwned();
        const Node node = owned.GetItem(owned.GetCount() / 2);
        if (folded) {
            nurvex7::Unfold(node, nurvex7::FOLD_CHILDREN);
        } else {
            nurvex7::Fold(node, nurvex7::FOLD_CHILDREN);
        }
        folded = !folded;
    });
}

void OneFoldAndUnfold(benchmark::State& state) {
    fold_and_unfold(state, sparse_of(state));
}

/// With the layout of the application, which has phases of its own.
void OneFoldAndUnfoldInTheWindow(benchmark::State& state) {
    families::Bench b = sparse_of(state);
    b.layout = std::make_unique<nurvex::SeriesLayout>(30, 12, 2, 5);
    b.graph->SetDefaultLayout(
        nurvex7::graph_ptr2<nurvex7::ILayout>(b.layout.get(), /*owns=*/false));
    fold_and_unfold(state, std::move(b));
}

void at_all_sizes(benchmark::internal::Benchmark* measured) {
    measured->Arg(1'000)->Arg(10'000)->Arg(100'000);
    measured->Unit(benchmark::kMillisecond)->Complexity(benchmark::oNLogN);
}

} // namespace

BENCHMARK(OneNodeAdded)->Apply(at_all_sizes);
BENCHMARK(OneFoldAndUnfold)->Apply(at_all_sizes);
BENCHMARK(OneFoldAndUnfoldInTheWindow)->Apply(at_all_sizes);
