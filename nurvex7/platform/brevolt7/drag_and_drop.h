#pragma once

#include "nurvex7/export.h"
#include "nurvex7/platform/tamsel7/geometry.h"

#include <any>
#include <string>

namespace tamsel7 {
class IPainter;
}

namespace brevolt7 {

class CVisualElement;

/// What is being dragged. The source fills it when the drag starts.
struct DragInfo {
    std::any data;    ///< whatever source and target agree on
    std::string text; ///< for targets that take text
    /// What HandleDrawDragItem paints, around the pointer; empty for nothing. Space: pixel.
    tamsel7::rectangle<int> item;
};

/// What things are dragged from. Space: x and y in pixels of the element.
class NURVEX7_API CDragSource {
public:
    virtual ~CDragSource();
    /// True where something is to be dragged from here; fills `info`. Asked when the pointer has
    /// left the place of its press, and nobody has captured it.
    virtual bool HandleStartDragging(int x, int y, DragInfo& info);
    /// The drag is over; `target` took the thing, or is null.
    virtual void HandleDragFinished(CVisualElement* target, DragInfo& info);
    /// Paints what is dragged; the pointer is at (0, 0). `accepted` where `target`, which is under
    /// the pointer, would take it.
    virtual void HandleDrawDragItem(tamsel7::IPainter* painter, DragInfo& info, bool accepted,
                                    CVisualElement* target);
};

/// What things are dropped on. Space: x and y in pixels of the element.
class NURVEX7_API CDropTarget {
public:
    virtual ~CDropTarget();
    /// True where the thing would be taken. `source` is null for what comes from outside.
    virtual bool HandleDragOver(CVisualElement* source, int x, int y, DragInfo& info);
    /// Takes the thing, which HandleDragOver accepted at this place.
    virtual void HandleDropDone(CVisualElement* source, int x, int y, DragInfo& info);
};

} // namespace brevolt7
