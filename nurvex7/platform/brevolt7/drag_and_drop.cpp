#include "nurvex7/platform/brevolt7/drag_and_drop.h"

namespace brevolt7 {

CDragSource::~CDragSource() = default;

bool CDragSource::HandleStartDragging(int /*x*/, int /*y*/, DragInfo& /*info*/) {
    return false;
}

void CDragSource::HandleDragFinished(CVisualElement* /*target*/, DragInfo& /*info*/) {}

void CDragSource::HandleDrawDragItem(tamsel7::IPainter* /*painter*/, DragInfo& /*info*/,
                                     bool /*accepted*/, CVisualElement* /*target*/) {}

CDropTarget::~CDropTarget() = default;

bool CDropTarget::HandleDragOver(CVisualElement* /*source*/, int /*x*/, int /*y*/,
                                 DragInfo& /*info*/) {
    return false;
}

void CDropTarget::HandleDropDone(CVisualElement* /*source*/, int /*x*/, int /*y*/,
                                 DragInfo& /*info*/) {}

} // namespace brevolt7
