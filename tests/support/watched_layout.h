#pragma once

#include "nurvex7/layout/inc_layout.h"

#include <map>
#include <vector>

namespace nurvex7::testing_support {

/// The layout with phases of its own, which write down what stood on the levels of an owner: at the
/// end of the run before, once that was brought back, and at the end of this one.
class WatchedLayout : public IncLayout {
public:
    struct Standing {
        int id;
        double y;      ///< owner-relative
        double height; ///< its room along the level
    };
    using picture = std::vector<std::vector<Standing>>; ///< by level

    /// An Update or Resize.
    struct Run {
        Node owner;
        picture before;   ///< along the levels by y
        picture restored; ///< along the levels as they stood in the run
        picture drawn;    ///< along the levels by y
    };

    WatchedLayout();

    std::vector<Run> runs; ///< since it was last emptied

private:
    picture take_picture();
    picture take_picture_by_y();
    int owner_id() const { return nodes.front().GetOwner().GetID(); }

    void note_made();
    void note_restored();
    void note_drawn();

    std::map<int, picture> last; // by owner id
};

/// By how much make_y_shifts has to move each node, by id, worked out in its plainest form.
std::map<int, double> expected_shifts(const WatchedLayout::picture& restored,
                                      double smaller_gap = 2);

} // namespace nurvex7::testing_support
