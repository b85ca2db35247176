#pragma once

#include "nurvex7/layout/inc_layout.h"
#include "tests/support/test_graph.h"

#include <string>
#include <string_view>
#include <vector>

namespace nurvex7 {

/// Looks into one layout run: runs the phases of an owner up to a named one, and reads and writes
/// what they share. Owners inside are served by the layout of the graph, whole.
class LayoutProbe {
public:
    explicit LayoutProbe(testing_support::TestGraph& of_graph) : g(of_graph) {
        layout.joins_chains = true; // so that their lists can be looked at
    }

    /// Make of an owner, up to and with the named phase.
    void make_up_to(std::string_view last) { make_up_to(last, g.root()); }
    void make_up_to(std::string_view last, const Node& owner) {
        run(layout.make_phases, last, &IncLayout::Make, owner);
    }
    void make() { make_up_to("make_epilogue"); }
    void update_up_to(std::string_view last) {
        run(layout.update_phases, last, &IncLayout::Update, g.root());
    }
    void update() { update_up_to("update_epilogue"); }
    void resize_up_to(std::string_view last) {
        run(layout.resize_phases, last, &IncLayout::Resize, g.root());
    }

    // Single steps on the state that a run left behind. The answers about the structure are kept
    // for the length of a run only, so they are brought back for the step.
    void barycentric_adjust() { step(&IncLayout::barycentric_adjust); }
    void calculate_initial_y_coords() { step(&IncLayout::calculate_initial_y_coords); }
    void make_y_shifts() { step(&IncLayout::make_y_shifts); }
    void force_adjust() { step(&IncLayout::force_adjust); }
    void calculate_x_coords() { step(&IncLayout::calculate_x_coords); }
    void force_adjust_block(std::size_t level, DependenceLevel dependence, bool with_dummies,
                            double lower, double upper);
    double height(const std::string& caption);

    /// Levels 1 to L-2 as `a | a>c b | c`, an empty level as `-`; with ports, all levels.
    std::string levels(bool with_ports = false) const;
    /// The y of the nodes of one level, in order.
    std::vector<double> ys(std::size_t level) const;
    void set_ys(std::size_t level, const std::vector<double>& ys);

    std::vector<std::vector<Node>>& level_nodes() { return layout.level_nodes; }
    Level column(std::size_t level) const { return layout.cur_levels->get(level); }
    int level_of(const std::string& caption) { return info(g.node(caption)).level; }
    NodeInfo& info(const Node& node) { return (*layout.cur_info)[node]; }
    EdgeInfo& info(const Edge& edge) { return (*layout.cur_info)[edge]; }
    LocalNodeInfo& local(const std::string& caption) { return layout.local_info[g.node(caption)]; }
    LocalNodeInfo& local(const Node& node) { return layout.local_info[node]; }
    LocalEdgeInfo& mark(const Edge& edge) { return layout.local_info[edge]; }
    NodeInfo& old(const std::string& caption) { return layout.old_info[g.node(caption)]; }
    tamsel7::size<double> result_size() const { return layout.result_size; }

    void init(double level_gap, double node_gap, double edge_gap, double edge_margin) {
        layout.Init(level_gap, node_gap, edge_gap, edge_margin);
    }
    /// The two switches that nothing in the library ever turns off.
    static void set_switches(IncLayout& of, bool use_force_adjust, bool keep_hidden) {
        of.use_force_adjust = use_force_adjust;
        of.keep_hidden = keep_hidden;
    }
    IncLayout& get_layout() { return layout; }

private:
    using phase_t = IncLayout::phase_t;

    void run(std::vector<phase_t>& phases, std::string_view last, void (IncLayout::*entry)(Node),
             const Node& owner);
    void step(phase_t phase);
    static phase_t phase_of(std::string_view name);

    testing_support::TestGraph& g;
    IncLayout layout;
    std::vector<Node> last_owner;
};

} // namespace nurvex7
