// Lays a text graph without clusters out on plain arrays: the least that the work takes.

#include "bench/limit/flat_layout.h"
#include "bench/measured_runs.h"

namespace {

void dump(const limit::FlatGraph& graph, const limit::FlatLayout& layout) {
    for (limit::index_t node = 0; node < graph.GetCount(); ++node) {
        const limit::Point position = layout.GetPosition(node);
        measured_runs::PrintNode(graph.ids[node], position.x, position.y);
    }
    for (limit::index_t edge = 0; edge < limit::count_of(graph.edges); ++edge) {
        measured_runs::PrintRoute(edge + 1, layout.GetRoute(edge));
    }
    measured_runs::PrintSize(layout.GetSize().x, layout.GetSize().y);
}

} // namespace

int main(int count, char** words) {
    return measured_runs::run(count, words, [](const measured_runs::Options& options) {
        return [graph = limit::ReadFlatGraph(options.graph, options.sizes)](bool dumps) {
            limit::FlatLayout layout(graph);
            const double time = measured_runs::milliseconds_of([&] { layout.Run(); });
            if (dumps) {
                dump(graph, layout);
            }
            return time;
        };
    });
}
