#include "nurvex7/platform/brevolt7/clipboard.h"

#include "nurvex7/platform/brevolt7/visual_element.h"

namespace brevolt7 {

void CopyToClipboard(const CVisualElement* element) {
    if (element == nullptr || element->GetControl() == nullptr) {
        return;
    }
    const tamsel7::rectangle<int> bounds = element->GetBounds();
    const tamsel7::point<int> corner = element->ToWindow({0, 0});
    element->GetControl()->SetClipboard(element->HandleAsString(),
                                        moved(bounds, corner.x, corner.y));
}

} // namespace brevolt7
