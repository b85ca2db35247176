#include "tests/support/watched_layout.h"

#include <algorithm>

namespace nurvex7::testing_support {

WatchedLayout::WatchedLayout() {
    const auto restored = static_cast<phase_t>(&WatchedLayout::note_restored);
    const auto drawn = static_cast<phase_t>(&WatchedLayout::note_drawn);
    make_phases.push_back(static_cast<phase_t>(&WatchedLayout::note_made));
    for (std::vector<phase_t>* phases : {&update_phases, &resize_phases}) {
        const auto restoring =
            std::find(phases->begin(), phases->end(), &WatchedLayout::restore_old_levels);
        phases->insert(restoring + 1, restored);
        phases->push_back(drawn);
    }
}

WatchedLayout::picture WatchedLayout::take_picture() {
    picture taken;
    for (const std::vector<Node>& level : level_nodes) {
        taken.emplace_back();
        for (const Node& n : level) {
            taken.back().push_back(Standing{n.GetID(), n.GetPosition().y, _get_height(n)});
        }
    }
    return taken;
}

// New nodes stand behind the old ones of their level, wherever their y may be.
WatchedLayout::picture WatchedLayout::take_picture_by_y() {
    picture taken = take_picture();
    for (std::vector<Standing>& level : taken) {
        std::stable_sort(level.begin(), level.end(),
                         [](const Standing& a, const Standing& b) { return a.y < b.y; });
    }
    return taken;
}

void WatchedLayout::note_made() {
    last[owner_id()] = take_picture_by_y();
}

void WatchedLayout::note_restored() {
    runs.push_back(Run{nodes.front().GetOwner(), last[owner_id()], take_picture(), {}});
}

void WatchedLayout::note_drawn() {
    runs.back().drawn = take_picture_by_y();
    last[owner_id()] = runs.back().drawn;
}

std::map<int, double> expected_shifts(const WatchedLayout::picture& restored, double smaller_gap) {
    std::map<double, double> room_at;
    std::map<int, double> shifts;
    for (std::size_t k = 1; k + 1 < restored.size(); ++k) {
        for (std::size_t i = 0; i + 1 < restored[k].size(); ++i) {
            const WatchedLayout::Standing& a = restored[k][i];
            const double y = restored[k][i + 1].y;
            const double room = a.y + a.height + smaller_gap / 2 - y;
            if (room > 0) {
                room_at[y] = std::max(room_at[y], room);
            }
        }
    }
    for (std::size_t k = 1; k + 1 < restored.size(); ++k) {
        for (const WatchedLayout::Standing& n : restored[k]) {
            double& shift = shifts[n.id];
            for (const auto& [y, room] : room_at) {
                shift += y <= n.y + n.height / 2 ? room : 0;
            }
        }
    }
    return shifts;
}

} // namespace nurvex7::testing_support
