// A full layout of named families, with the fitted growth. Figures are for reading as fits and
// ratios of one run; no threshold is tested.

#include <benchmark/benchmark.h>

#include "families.h"

namespace {

template <families::Bench (*family)(std::size_t)>
void Make(benchmark::State& state) {
    families::Bench b = family(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        b.Make();
    }
    state.SetComplexityN(state.range(0));
}

template <families::Bench (*family)(std::size_t)>
void BuildAndDelete(benchmark::State& state) {
    for (auto _ : state) {
        const families::Bench b = family(static_cast<std::size_t>(state.range(0)));
        benchmark::DoNotOptimize(b.graph.get());
    }
    state.SetComplexityN(state.range(0));
}

} // namespace

BENCHMARK(Make<families::sparse>)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oNLogN);
BENCHMARK(Make<families::tree>)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oNLogN);
BENCHMARK(Make<families::nested>)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oNLogN);
BENCHMARK(Make<families::chain>)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oNLogN);
BENCHMARK(BuildAndDelete<families::sparse>)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oNLogN);
