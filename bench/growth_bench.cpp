// How hit tests and the reading of a text graph grow with the graph.

#include "nurvex7/model/text_graph.h"

#include <benchmark/benchmark.h>

#include <map>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "families.h"

namespace {

using families::Bench;
using nurvex7::Node;

using family_t = Bench (*)(std::size_t);

std::size_t size_of(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

/// Hit tests by nodes and by edges, of rectangles around nodes all over a drawing. What they meet
/// is told beside the time, which is to grow with that, and beside it with log n.
void HitTest(benchmark::State& state, family_t family, double width, double height) {
    const Bench b = family(size_of(state));
    b.graph->RecalculateLayout(nullptr);
    nurvex7::NodeSet nodes = b.graph->GetRoot().GetOwned();
    std::mt19937 random(17);
    std::vector<tamsel7::point<double>> places;
    for (int i = 0; i < 4096; ++i) {
        const auto any = static_cast<int>(random() % static_cast<unsigned>(nodes.GetCount()));
        const auto corner = nodes.GetItem(any).GetPosition();
        places.push_back({corner.x + 30, corner.y + 10});
    }
    double hits = 0;
    std::size_t next = 0;
    const auto test = [&] {
        const auto [x, y] = places[++next % places.size()];
        hits += b.graph->HitNodeTest(x, y, x + width, y + height).GetCount();
        hits += b.graph->HitEdgeTest(x, y, x + width, y + height).GetCount();
    };
    for (std::size_t i = 0; i < places.size(); ++i) {
        test(); // the first one at each place parts the index there
    }
    hits = 0;
    for (auto _ : state) {
        test();
    }
    state.counters["hits"] = hits / static_cast<double>(state.iterations());
    state.SetComplexityN(state.range(0));
}

/// The text of a graph, with captions as people give them. Edges come by their sources.
std::string text_of(const Bench& b) {
    std::map<int, int> numbers{{0, 0}};
    const auto for_all = [&b](auto f) {
        nurvex7::ForEachNodeIn(b.graph->GetRoot(), f, /*post_order=*/false, /*include_self=*/false);
    };
    std::ostringstream text;
    text << "made\n[nodes]\n";
    for_all([&](const Node& node) {
        const int number = static_cast<int>(numbers.size());
        numbers.emplace(node.GetID(), number);
        text << number << " \"node " << number << "\" 0 " << numbers[node.GetOwner().GetID()]
             << '\n';
    });
    text << "[edges]\n";
    for_all([&](const Node& node) {
        nurvex7::NodeSet children = node.GetChildren();
        for (int i = 0; i < children.GetCount(); ++i) {
            text << numbers[node.GetID()] << ' ' << numbers[children.GetItem(i).GetID()]
                 << " \"\"\n";
        }
    });
    return text.str();
}

void LoadText(benchmark::State& state, family_t family) {
    const std::string text = text_of(family(size_of(state)));
    for (auto _ : state) {
        std::optional<Bench> loaded;
        state.PauseTiming();
        loaded.emplace();
        std::istringstream in(text);
        state.ResumeTiming();
        benchmark::DoNotOptimize(nurvex7::Load(loaded->graph, in));
        state.PauseTiming();
        loaded.reset();
        state.ResumeTiming();
    }
    state.counters["bytes"] = static_cast<double>(text.size());
    state.SetComplexityN(state.range(0));
}

} // namespace

BENCHMARK_CAPTURE(HitTest, mesh_point, families::mesh, 0, 0)
    ->RangeMultiplier(8)
    ->Range(1 << 9, 1 << 18)
    ->Unit(benchmark::kMicrosecond)
    ->Complexity(benchmark::oLogN);
BENCHMARK_CAPTURE(HitTest, sparse_point, families::sparse, 0, 0)
    ->RangeMultiplier(8)
    ->Range(1 << 9, 1 << 18)
    ->Unit(benchmark::kMicrosecond)
    ->Complexity(benchmark::oLogN);
BENCHMARK_CAPTURE(HitTest, mesh_window, families::mesh, 800, 600)
    ->RangeMultiplier(8)
    ->Range(1 << 9, 1 << 18)
    ->Unit(benchmark::kMicrosecond)
    ->Complexity(benchmark::oLogN);
BENCHMARK_CAPTURE(LoadText, sparse, families::sparse)
    ->RangeMultiplier(10)
    ->Range(1'000, 1'000'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oNLogN);
BENCHMARK_CAPTURE(LoadText, nested, families::nested)
    ->RangeMultiplier(10)
    ->Range(1'000, 1'000'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oNLogN);
