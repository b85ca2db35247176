// What the viewer costs on graphs of which a window shows a part: frames, steps of a pan, the
// pointer that hovers, a click that folds. The ratio between the sizes tells what matters: a frame
// ought to cost what it shows.

#include <benchmark/benchmark.h>

#include "viewer_stage.h"

namespace {

using families::Bench;
using stage::Viewer;

using family_t = Bench (*)(std::size_t);

std::size_t size_of(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

void tell_what_shows(benchmark::State& state, Viewer& v) {
    v.handler.nodes = 0;
    v.painter.drawn = 0;
    v.PaintAll();
    state.counters["nodes"] = static_cast<double>(v.handler.nodes);
    state.counters["drawn"] = static_cast<double>(v.painter.drawn);
}

void Frame(benchmark::State& state, family_t family) {
    Viewer v(family(size_of(state)));
    for (auto _ : state) {
        v.PaintAll();
    }
    tell_what_shows(state, v);
}

void FrameAfterADrag(benchmark::State& state, family_t family) {
    Viewer v(family(size_of(state)));
    tamsel7::point<double> at = v.fan.GetPosition();
    double step = 1;
    for (auto _ : state) {
        at.x += step;
        step = -step;
        nurvex7::MoveNode(v.fan, at.x, at.y);
        v.PaintAll();
    }
}

void PanStep(benchmark::State& state, family_t family) {
    Viewer v(family(size_of(state)));
    const double from = v.viewer->GetStartX();
    double step = 40;
    v.painter.filled = 0;
    for (auto _ : state) {
        v.viewer->SetStartX(v.viewer->GetStartX() + step);
        v.Paint();
        step = v.viewer->GetStartX() > from ? -40 : 40;
    }
    state.counters["filled"] =
        v.painter.filled / static_cast<double>(state.iterations()) / Viewer::HEIGHT;
}

/// What is under the pointer at each of its moves.
void Hover(benchmark::State& state, family_t family) {
    Viewer v(family(size_of(state)));
    int x = 0;
    for (auto _ : state) {
        x = (x + 37) % Viewer::WIDTH;
        const int y = x * Viewer::HEIGHT / Viewer::WIDTH;
        const nurvex7::CContent& content = *v.viewer->GetContent();
        benchmark::DoNotOptimize(content.HitNodeTest(x, y, x, y).GetCount());
        benchmark::DoNotOptimize(content.HitEdgeTest(x, y, x, y).GetCount());
    }
}

void FoldingClick(benchmark::State& state, family_t family) {
    Viewer v(family(size_of(state)));
    for (auto _ : state) {
        v.ClickFan();
    }
}

/// The first hit tests after every node was moved, beside the moves alone.
void HitTestsAfterAMoveOfEverything(benchmark::State& state, family_t family) {
    Viewer v(family(size_of(state)));
    for (auto _ : state) {
        state.PauseTiming();
        nurvex7::ShiftPosition(v.bench.graph->GetRoot(), 1, 0);
        state.ResumeTiming();
        benchmark::DoNotOptimize(v.bench.graph->HitNodeTest(0, 0, 1, 1).GetCount());
        benchmark::DoNotOptimize(v.bench.graph->HitEdgeTest(0, 0, 1, 1).GetCount());
    }
}

void sizes(benchmark::internal::Benchmark* b) {
    b->Arg(1'000)->Arg(10'000)->Arg(100'000);
}

BENCHMARK_CAPTURE(Frame, mesh, families::mesh)->Apply(sizes)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Frame, sparse, families::sparse)->Apply(sizes)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Frame, nested, families::nested)->Apply(sizes)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(FrameAfterADrag, mesh, families::mesh)
    ->Apply(sizes)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(PanStep, mesh, families::mesh)->Apply(sizes)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Hover, mesh, families::mesh)->Apply(sizes)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Hover, sparse, families::sparse)->Apply(sizes)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(FoldingClick, mesh, families::mesh)->Apply(sizes)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FoldingClick, tree, families::tree)->Apply(sizes)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(HitTestsAfterAMoveOfEverything, mesh, families::mesh)
    ->Apply(sizes)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(HitTestsAfterAMoveOfEverything, sparse, families::sparse)
    ->Apply(sizes)
    ->Unit(benchmark::kMillisecond);

} // namespace
