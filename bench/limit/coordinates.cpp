#include "bench/limit/flat_layout.h"

#include <algorithm>

namespace limit {

void FlatLayout::Run() {
    in.Build(graph, Adjacency::Side::IN);
    out.Build(graph, Adjacency::Side::OUT);
    find_levels();
    place_on_levels();
    reduce_crossings();
    stack_levels();
    straighten();
    find_coordinates();
}

std::vector<Point> FlatLayout::GetRoute(index_t edge) const {
    const auto first = bends.begin() + first_bend[edge];
    return {first, first + bend_count[edge]};
}

// Gives each level its column, and the nodes and bends on it their coordinates.
void FlatLayout::find_coordinates() {
    const double top =
        std::min(NODE_GAP, y.empty() ? NODE_GAP : *std::min_element(y.begin(), y.end()));
    for (double& value : y) {
        value -= top - NODE_GAP;
    }
    double left = LEVEL_GAP;
    double bottom = 0;
    for (std::size_t k = 1; k + 1 < level_nodes.size(); ++k) {
        const Column column = column_of(level_nodes[k], left);
        bottom = place_level(level_nodes[k], column, bottom);
        left = column.right + (column.right - column.left == 0 ? 0 : LEVEL_GAP);
        size.y = std::max(size.y, bottom + NODE_GAP);
    }
    size.x = left;
}

/// A level without nodes takes no width.
FlatLayout::Column FlatLayout::column_of(const places_t& places, double left) const {
    double right = left;
    for (const index_t place : places) {
        if (!is_dummy(place)) {
            right = std::max(right, left + graph.widths[place]);
        }
    }
    return {left, right != left ? right + 2 * EDGE_MARGIN : right};
}

/// Gives the bottom of the lowest track under the last node, or what came in where there is none.
double FlatLayout::place_level(const places_t& places, const Column& column, double bottom) {
    for (const index_t place : places) {
        if (is_dummy(place)) {
            place_dummy(place, column);
        } else {
            place_node(place, column);
            bottom = lay_tracks(place, column);
        }
    }
    return bottom;
}

void FlatLayout::place_dummy(index_t place, const Column& column) {
    const Dummy& dummy = dummy_at(place);
    const bool backwards = reversed[dummy.edge] != 0;
    x[place] = backwards ? column.right : column.left;
    bends[dummy.bend] = {x[place], y[place]};
    bends[dummy.bend + 1] = {backwards ? column.left : column.right, y[place]};
}

/// The bends beside a node: every edge leaves it on the right and enters it on the left.
void FlatLayout::place_node(index_t node, const Column& column) {
    const double width = graph.widths[node];
    const double centre = centre_of(node);
    x[node] = (column.left + column.right - width) / 2;
    for (const Adjacency::Link& link : out.of(node)) {
        Point* const first = &bends[first_bend[link.edge]];
        const bool wraps = reversed[link.edge] != 0 || flat[link.edge] != 0;
        first[0] = {x[node] + width, centre};
        first[1] = {wraps ? x[node] + width + EDGE_MARGIN : column.right, centre};
    }
    for (const Adjacency::Link& link : in.of(node)) {
        Point* const end = bends.data() + first_bend[link.edge] + bend_count[link.edge];
        end[-2] = {reversed[link.edge] != 0 ? x[node] - EDGE_MARGIN : column.left, centre};
        end[-1] = {x[node], centre};
    }
}

/// Edges that stay on the level or run backwards go about the node on tracks under it, those that
/// leave it above those that enter it. Gives the bottom of the lowest track.
double FlatLayout::lay_tracks(index_t node, const Column& column) {
    const double right_stub = x[node] + graph.widths[node] + EDGE_MARGIN;
    const double left_stub = x[node] - EDGE_MARGIN;
    double bottom = y[node] + graph.heights[node];
    const auto next_track = [&bottom] {
        const double track = bottom + EDGE_GAP;
        bottom = track + EDGE_WIDTH;
        return track;
    };
    for (const Adjacency::Link& link : out.of(node)) {
        if (reversed[link.edge] != 0 || flat[link.edge] != 0) {
            const double track = next_track();
            Point* const first = &bends[first_bend[link.edge]];
            first[2] = {right_stub, track};
            first[3] = {column.left, track};
        }
    }
    for (const Adjacency::Link& link : in.of(node)) {
        if (reversed[link.edge] != 0) {
            const double track = next_track();
            Point* const end = bends.data() + first_bend[link.edge] + bend_count[link.edge];
            end[-4] = {column.right, track};
            end[-3] = {left_stub, track};
        }
    }
    return bottom;
}

} // namespace limit
