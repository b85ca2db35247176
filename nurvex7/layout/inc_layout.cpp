#include "nurvex7/layout/inc_layout.h"

#include "nurvex7/layout/level_graph.h"
#include "nurvex7/layout/ordinals.h"
#include "nurvex7/layout/run_edges.h"
#include "nurvex7/layout/standing.h"
#include "nurvex7/model/moving.h"
#include "nurvex7/model/queries.h"

#include <utility>

namespace nurvex7 {

ILayout::~ILayout() = default;

IncLayout::IncLayout() : IncLayout(30, 12, 2, 5) {}

IncLayout::IncLayout(double level_gap_, double node_gap_, double edge_gap_, double edge_margin_) {
    Init(level_gap_, node_gap_, edge_gap_, edge_margin_);
}

IncLayout::~IncLayout() = default;

graph_ptr2<IncLayout> IncLayout::Create() {
    return graph_ptr2<IncLayout>(new IncLayout, /*owns=*/true);
}

graph_ptr2<ILayout> GetDefaultLayout() {
    static graph_ptr2<ILayout> shared;
    if (shared.get() == nullptr) {
        shared = IncLayout::Create();
    }
    return shared;
}

void IncLayout::Init(double level_gap_, double node_gap_, double edge_gap_, double edge_margin_) {
    use_force_adjust = true;
    keep_hidden = true;
    level_gap = level_gap_;
    node_gap = node_gap_;
    edge_gap = edge_gap_;
    edge_margin = edge_margin_;
    ++inits;
    // Deliberate: appends, never replaces. A second Init makes every phase run twice.
    make_phases.insert(make_phases.end(),
                       {
                           &IncLayout::determine_levels,           // level_assignment.cpp
                           &IncLayout::place_nodes_on_levels,      // dummy_nodes.cpp
                           &IncLayout::barycentric_adjust,         // crossing_reduction.cpp
                           &IncLayout::calculate_initial_y_coords, // vertical_placement.cpp
                           &IncLayout::force_adjust,               // force_adjustment.cpp
                           &IncLayout::calculate_x_coords,         // coordinates.cpp
                           &IncLayout::make_epilogue,              // level_table.cpp
                       });
    update_phases.insert(update_phases.end(),
                         {
                             &IncLayout::restore_old_levels,           // old_drawing.cpp
                             &IncLayout::make_y_shifts,                // vertical_placement.cpp
                             &IncLayout::determine_new_nodes_levels,   // new_levels.cpp
                             &IncLayout::place_nodes_on_levels,        // dummy_nodes.cpp
                             &IncLayout::calculate_new_nodes_y_coords, // new_nodes.cpp
                             &IncLayout::calculate_x_coords,           // coordinates.cpp
                             &IncLayout::update_epilogue,              // level_table.cpp
                         });
    resize_phases.insert(resize_phases.end(),
                         {
                             &IncLayout::restore_old_levels, // old_drawing.cpp
                             &IncLayout::make_y_shifts,      // vertical_placement.cpp
                             &IncLayout::calculate_x_coords, // coordinates.cpp
                             &IncLayout::resize_epilogue,    // level_table.cpp
                         });
}

void IncLayout::Make(Node owner) {
    if (IsRoot(owner)) {
        cur_info = nullptr;
        cur_levels = nullptr;
        cluster_info.clear();
        cluster_levels.clear();
    }
    if (take_size_of_leaf(owner)) {
        return;
    }
    const KeptAnswers kept(*this, owner);
    serve_inside(owner, &_make_layout);
    cur_info = &cluster_info[owner];
    cur_info->clear();
    local_info.clear();
    old_info.clear();
    start_run(owner);
    cur_levels = &cluster_levels[owner];
    cur_levels->clear();
    release_levels(last_levels);
    collects_joins = !joins_old_chains();
    run(make_phases);
    let_go_of_neighbours();
    owner.SetSize(result_size);
}

void IncLayout::Update(Node owner) {
    if (take_size_of_leaf(owner)) {
        return;
    }
    const KeptAnswers kept(*this, owner);
    serve_inside(owner, &_update_layout);
    remember_old_drawing(owner);
    local_info.clear();
    cur_levels = &cluster_levels[owner];
    start_run(owner);
    take_old_drawing_back(owner);
    run(update_phases);
    cur_info->node_info.let_go_of_stale();
    owner.SetSize(result_size);
}

void IncLayout::Resize(Node owner) {
    if (take_size_of_leaf(owner)) {
        return;
    }
    const KeptAnswers kept(*this, owner);
    remember_old_drawing(owner);
    // Deliberate: local_info stays as the run before left it, whichever owner that served; tracks
    // and marks of edges are read from it and not computed again.
    start_run(owner);
    cur_levels = &cluster_levels[owner];
    cur_levels->forget_length();
    UnshiftPosition(owner);
    run(resize_phases);
    cur_info->node_info.let_go_of_stale();
    owner.SetSize(result_size);
    ShiftPosition(owner, {0, 0});
}

void IncLayout::run(const std::vector<phase_t>& phases) {
    try {
        for (const phase_t phase : phases) {
            checkpoint();
            (this->*phase)();
        }
    } catch (...) {
        write_kept_records();
        throw;
    }
    drop_run();
}

// So many nodes take some tens of milliseconds.
void IncLayout::count_steps(std::size_t steps) {
    constexpr std::size_t BETWEEN_CHECKPOINTS = 16384;
    steps_uncounted += steps;
    if (steps_uncounted >= BETWEEN_CHECKPOINTS) {
        steps_uncounted = 0;
        checkpoint();
    }
}

} // namespace nurvex7
