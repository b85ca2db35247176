#pragma once

#include "bench/limit/flat_graph.h"

#include <cfloat>
#include <cstddef>
#include <utility>
#include <vector>

namespace limit {

struct Point {
    double x;
    double y;
};

/// The work of one full layout, and nothing else: what IncLayout::Make does with a graph without
/// clusters, on arrays that are made for it and thrown away behind it. It keeps nothing for a later
/// update, asks no handler and can be derived from by nobody. The coordinates are the same to the
/// last bit, so its time and its memory are what the library's can be divided by.
///
/// A place is a node, or behind the nodes a dummy: what an edge holds on a level that it passes.
class FlatLayout {
public:
    /// The graph stays with the caller.
    explicit FlatLayout(const FlatGraph& of) : graph(of) {}

    void Run();

    Point GetPosition(index_t node) const { return {x[node], y[node]}; }
    /// The bends of an edge from its source to its target.
    std::vector<Point> GetRoute(index_t edge) const;
    Point GetSize() const { return size; }

private:
    using places_t = std::vector<index_t>;
    using neighbours_t = std::vector<places_t>; ///< by place

    struct Dummy {
        index_t bend; ///< the first of its two
        index_t edge;
    };
    /// Some places of a level that follow each other, and how high and low they may go.
    struct Stretch {
        const index_t* first;
        const index_t* last;
        double lower = -DBL_MAX;
        double upper = DBL_MAX;
    };

    // levels.cpp
    void find_levels();
    void judge_edges(const std::vector<int>& by);
    template <typename F>
    void for_each_successor(index_t node, F f) const;
    std::vector<index_t> follow_longest_paths();
    void tighten(index_t start);

    // chains.cpp
    void place_on_levels();
    void add_edge(index_t edge);
    void add_chain(index_t edge);
    index_t add_dummy(index_t edge, index_t bend, int at_level);
    void join(index_t lower, index_t upper);
    void wrap(const FlatEdge& ends);

    // sweeps.cpp
    void reduce_crossings();
    void sort_level(places_t& places, const neighbours_t& neighbours);
    void stack_levels();

    // forces.cpp
    void straighten();
    void straighten_dummies(const places_t& places);
    void adjust(const Stretch& stretch, const neighbours_t& neighbours, bool with_dummies);
    void pull(const Stretch& stretch, const neighbours_t& neighbours, bool with_dummies);
    double pull_on(index_t place, const places_t& neighbours, index_t& felt) const;
    void settle(const Stretch& stretch);
    double move(const Stretch& stretch, std::size_t begin, std::size_t end, double shift,
                double lower);
    void hold_upper_bound(const Stretch& stretch);

    // coordinates.cpp
    struct Column {
        double left;
        double right;
    };
    void find_coordinates();
    Column column_of(const places_t& places, double left) const;
    double place_level(const places_t& places, const Column& column, double bottom);
    void place_dummy(index_t place, const Column& column);
    void place_node(index_t node, const Column& column);
    double lay_tracks(index_t node, const Column& column);

    bool is_dummy(index_t place) const { return place >= graph.GetCount(); }
    const Dummy& dummy_at(index_t place) const { return dummies[place - graph.GetCount()]; }
    double gap_at(index_t place) const { return is_dummy(place) ? EDGE_GAP : NODE_GAP; }
    double room_of(index_t place) const;
    double centre_of(index_t place) const {
        return is_dummy(place) ? y[place] : y[place] + graph.heights[place] / 2;
    }

    static constexpr double LEVEL_GAP = 30;
    static constexpr double NODE_GAP = 12;
    static constexpr double EDGE_GAP = 2;
    static constexpr double EDGE_MARGIN = 5;
    static constexpr double EDGE_WIDTH = 1;

    const FlatGraph& graph;
    Adjacency in;
    Adjacency out;

    std::vector<int> level;     ///< by node, from 1
    std::vector<char> reversed; ///< by edge
    std::vector<char> flat;     ///< by edge

    std::vector<places_t> level_nodes; ///< by level; the first and the last stay empty
    std::vector<int> wrap_count;       ///< by node: the edges that run on a track under it
    std::vector<Dummy> dummies;
    neighbours_t in_neighbours;
    neighbours_t out_neighbours;

    std::vector<index_t> first_bend; ///< by edge
    std::vector<index_t> bend_count; ///< by edge
    std::vector<Point> bends;
    std::vector<double> x; ///< by place
    std::vector<double> y; ///< by place; an ordinal while crossings are reduced
    Point size = {0, 0};

    std::vector<std::pair<double, index_t>> keys; ///< of the level being sorted
    places_t sorted;
    std::vector<double> forces; ///< of the run being moved
    std::vector<char> free;     ///< likewise: nothing pulls here
};

} // namespace limit
