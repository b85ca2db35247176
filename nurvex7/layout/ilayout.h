#pragma once

#include "nurvex7/export.h"
#include "nurvex7/foundation/graph_ptr2.h"
#include "nurvex7/model/fwd.h"

namespace nurvex7 {

/// What draws the nodes that one node owns. The graph calls it from Graph::RecalculateLayout,
/// never from a setter.
///
/// Space   a layout places what is owned relative to the owner; after Make and Update the caller
///         makes it absolute with ShiftPosition(owner, (0, 0)), Resize does that itself
class NURVEX7_API ILayout {
public:
    virtual ~ILayout();
    /// Draws what the owner owns, and everything inside it, from nothing.
    virtual void Make(Node owner) = 0;
    /// Fits what is new into the drawing that stands. Duty: a Make came before.
    virtual void Update(Node owner) = 0;
    /// Reacts to changed sizes of the owned nodes; places nothing new. Duty: a Make came before.
    virtual void Resize(Node owner) = 0;
};

/// The layout that every graph of the process starts with: one shared IncLayout, made at the first
/// call and kept to the end of the program.
///
/// Duty    two graphs are not laid out at the same time with it
NURVEX7_API graph_ptr2<ILayout> GetDefaultLayout();

} // namespace nurvex7
