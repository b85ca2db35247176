#include "nurvex7/platform/brevolt7/element_ref.h"

#include "nurvex7/platform/brevolt7/visual_element.h"

namespace brevolt7 {

CElementRef::CElementRef(CVisualElement* element) : target(element) {
    if (element != nullptr) {
        life = element->life;
    }
}

} // namespace brevolt7
