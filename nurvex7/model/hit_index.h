#pragma once

#include "nurvex7/model/box_index.h"

#include <cstddef>
#include <vector>

namespace nurvex7 {

/// Where the records of one kind stood when a hit test last looked at all of them, and which of
/// them are to be looked at by themselves since.
///
/// Records tell of their first change after a build; what has changed is tested plainly beside the
/// boxes. It is built anew once an eighth has changed, or once these tests have cost about as much
/// as a build, so that a node may be dragged through a large graph, and a layout that moves
/// everything pays for a list of an eighth.
class HitIndex {
public:
    BoxIndex boxes;
    std::vector<int> changed; ///< ids; none of what the boxes say about them is to be trusted

    bool is_due() const {
        return !built || changed.size() > most_changed || changed.size() > budget;
    }
    bool is_built() const { return built; }
    /// Called by each test.
    void pay_for_changed() { budget -= changed.size(); }

    void begin_build() {
        built = false;
        boxes.clear();
        changed.clear();
    }
    void finish_build(std::size_t records) {
        boxes.build();
        most_changed = records / 8 + 16;
        budget = (records + 16) * 8;
        built = true;
    }

    /// A record came, or is no longer where it was.
    void note(int id) {
        if (!built) {
            return;
        }
        changed.push_back(id);
        if (changed.size() > most_changed) {
            built = false;
            changed.clear();
        }
    }

private:
    bool built = false;
    std::size_t most_changed = 0;
    std::size_t budget = 0; ///< plain tests until a build is cheaper
};

} // namespace nurvex7
