#pragma once

#include "nurvex7/layout/inc_layout.h"

#include <cstddef>
#include <map>
#include <vector>

namespace nurvex {

/// The layout of a drawing that is followed from step to step. What an update and a resize keep is
/// kept here too, and beside that
///
/// - edges across the border of a cluster come back with the old drawing inside it. By themselves
///   their bends would not go along when a column grows, and lose their places from the second
///   update on; an edge that has come to an old node would have no way to the border.
/// - a node that has grown past the middle of the one below it gets its room, with the whole gap.
/// - an owner is as tall as all that has been fitted in, also above what stood.
/// - a resize knows again which edges run on tracks, and leaves the columns where they stand.
class SeriesLayout : public nurvex7::IncLayout {
public:
    SeriesLayout(double level_gap, double node_gap, double edge_gap, double edge_margin);

    /// The level of a node inside its owner; -1 where it has none. Duty: the node is not the root.
    int LevelOf(const nurvex7::Node& node) const;

private:
    /// The edges across the border of the owner at one side of a node.
    struct Crossings {
        nurvex7::Node node;
        nurvex7::Order order;
    };

    void find_crossings();
    void remember_columns();
    void restore_columns();
    void restore_marks();
    void restore_crossings();
    void open_rooms();
    void renew_crossings();
    void sort_levels();
    void mark_crossings();

    std::map<double, double> find_rooms();
    bool stood_before(const nurvex7::Node& node);
    nurvex7::StructureIndex::Pairs edges_of(const Crossings& crossings);
    void restore_chain(const Crossings& at, const nurvex7::Edge& edge, std::vector<bool>& grown);
    bool reaches_border(const Crossings& at, const nurvex7::Edge& edge);
    void sort_level(std::size_t level);

    std::vector<Crossings> crossings; ///< per run: of nodes with any, in the order of the nodes
    nurvex7::LevelTable columns;      ///< per run: those of the run before
};

} // namespace nurvex
