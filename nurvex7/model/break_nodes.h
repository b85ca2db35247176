#pragma once

#include "nurvex7/model/visual_store.h"

#include <cstddef>

namespace nurvex7 {

/// A break node and its record, side by side. Layouts make break nodes by the million and ask for
/// the record of each: here both come and go with one allocation for a whole run of them.
///
/// Keeps   each of the two the other one
struct BreakNode {
    BreakNode(BreakNodes& all, const graph_ptr<edge_impl_vector>& edge, DefaultGraphVis* store);
    BreakNode(const BreakNode&) = delete;
    BreakNode& operator=(const BreakNode&) = delete;
    ~BreakNode() = default;

    /// Called when one of the two has been let go by everybody.
    void end_if_let_go();

    BreakNodes* made_with;
    DummyNodeImpl node;
    DefaultNodeVis vis;
};

/// The break nodes that one call has made. The memory goes with the last of them.
class BreakNodes {
public:
    BreakNodes(const BreakNodes&) = delete;
    BreakNodes& operator=(const BreakNodes&) = delete;

    /// Appends new break nodes to a run.
    static void Make(BreakNodeList& list, DefaultGraphVis* store,
                     const graph_ptr<edge_impl_vector>& edge, std::size_t count,
                     node_impl_vector& run);
    void lose_one();

private:
    friend struct BreakNodeList;

    BreakNodes(BreakNodeList& of_store, std::size_t how_many);
    ~BreakNodes();
    BreakNode* begin() { return reinterpret_cast<BreakNode*>(this + 1); }
    BreakNode* end() { return begin() + count; }
    void disown();

    BreakNodeList* list; ///< null once the store is gone
    std::size_t count;
    std::size_t left; ///< that somebody holds
    BreakNodes* next;
    BreakNodes* before = nullptr;
};

} // namespace nurvex7
