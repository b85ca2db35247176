#pragma once

namespace nurvex7 {

/// Bits of a node's condition word. A new node has none of them: visible, and not drawn before the
/// next MarkDrawnIn.
enum NodeFlag : int {
    NODE_HIDDEN = 1,      ///< not shown; it keeps its level in the drawing
    NODE_SELECTED = 2,    ///< selected
    NODE_DRAWN = 4,       ///< takes part in drawing; written by MarkDrawnIn only
    NODE_HIGHLIGHTED = 8, ///< the caller's mark; drawn lightened
    NODE_NEW = 16,        ///< came back from hidden since the last MarkOld
    NODE_HOVERED = 32     ///< the pointer is on the node
};

/// Bits of an edge's condition word.
enum EdgeFlag : int {
    EDGE_DRAWN = 4,       ///< takes part in drawing; written by MarkDrawnIn only
    EDGE_HIGHLIGHTED = 8, ///< the caller's mark; drawn in the highlight colour
    EDGE_HOVERED = 16     ///< the pointer is on the edge
};

/// Which neighbours a fold hides. Every value but FOLD_CHILDREN counts as FOLD_PARENTS.
enum FoldDirection : int { FOLD_PARENTS = 0, FOLD_CHILDREN = 1 };

} // namespace nurvex7
