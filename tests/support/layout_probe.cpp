#include "tests/support/layout_probe.h"

#include <algorithm>
#include <map>
#include <memory>
#include <stdexcept>

namespace nurvex7 {

LayoutProbe::phase_t LayoutProbe::phase_of(std::string_view name) {
    static const std::map<std::string_view, phase_t> known = {
        {"determine_levels", &IncLayout::determine_levels},
        {"place_nodes_on_levels", &IncLayout::place_nodes_on_levels},
        {"barycentric_adjust", &IncLayout::barycentric_adjust},
        {"calculate_initial_y_coords", &IncLayout::calculate_initial_y_coords},
        {"force_adjust", &IncLayout::force_adjust},
        {"calculate_x_coords", &IncLayout::calculate_x_coords},
        {"make_epilogue", &IncLayout::make_epilogue},
        {"restore_old_levels", &IncLayout::restore_old_levels},
        {"make_y_shifts", &IncLayout::make_y_shifts},
        {"determine_new_nodes_levels", &IncLayout::determine_new_nodes_levels},
        {"calculate_new_nodes_y_coords", &IncLayout::calculate_new_nodes_y_coords},
        {"update_epilogue", &IncLayout::update_epilogue},
        {"resize_epilogue", &IncLayout::resize_epilogue},
    };
    return known.at(name);
}

void LayoutProbe::run(std::vector<phase_t>& phases, std::string_view last,
                      void (IncLayout::*entry)(Node), const Node& owner) {
    const std::vector<phase_t> all = phases;
    const auto end = std::find(phases.begin(), phases.end(), phase_of(last));
    if (end == phases.end()) {
        throw std::invalid_argument("not in this list of phases");
    }
    phases.erase(end + 1, phases.end());
    last_owner.assign(1, owner);
    (layout.*entry)(owner);
    phases = all;
}

void LayoutProbe::step(phase_t phase) {
    layout.structure = std::make_shared<StructureIndex>(last_owner.front());
    (layout.*phase)();
    layout.drop_run();
    layout.structure.reset();
}

void LayoutProbe::force_adjust_block(std::size_t level, DependenceLevel dependence,
                                     bool with_dummies, double lower, double upper) {
    layout.structure = std::make_shared<StructureIndex>(last_owner.front());
    std::vector<Node>& nodes = layout.level_nodes[level];
    layout.force_adjust_block(nodes.begin(), nodes.end(), dependence, with_dummies, lower, upper);
    layout.drop_run();
    layout.structure.reset();
}

double LayoutProbe::height(const std::string& caption) {
    layout.structure = std::make_shared<StructureIndex>(last_owner.front());
    const double result = layout._get_height(g.node(caption));
    layout.structure.reset();
    return result;
}

std::string LayoutProbe::levels(bool with_ports) const {
    std::string picture;
    const std::size_t first = with_ports ? 0 : 1;
    const std::size_t end = layout.level_nodes.size() - first;
    for (std::size_t k = first; k < end; ++k) {
        picture += k > first ? " |" : "";
        for (const Node& node : layout.level_nodes[k]) {
            picture += " " + testing_support::name_of(node);
        }
        picture += layout.level_nodes[k].empty() ? " -" : "";
    }
    return picture.substr(std::min<std::size_t>(1, picture.size()));
}

std::vector<double> LayoutProbe::ys(std::size_t level) const {
    std::vector<double> result;
    for (const Node& node : layout.level_nodes[level]) {
        result.push_back(node.GetPosition().y);
    }
    return result;
}

void LayoutProbe::set_ys(std::size_t level, const std::vector<double>& ys) {
    for (std::size_t i = 0; i < ys.size(); ++i) {
        Node node = layout.level_nodes[level].at(i);
        node.SetPosition(node.GetPosition().x, ys[i]);
    }
}

} // namespace nurvex7
