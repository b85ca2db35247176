#pragma once

#include "nurvex7/export.h"

#include <memory>

namespace brevolt7 {

class CVisualElement;

/// A pointer to an element that turns null when the element dies. Whatever calls an element and
/// goes on afterwards holds it by one: an event may remove the element that it is for.
class NURVEX7_API CElementRef {
public:
    CElementRef() = default;
    CElementRef(CVisualElement* element);

    CVisualElement* Get() const { return life.expired() ? nullptr : target; }
    CVisualElement* operator->() const { return target; }
    explicit operator bool() const { return !life.expired(); }

private:
    CVisualElement* target = nullptr;
    std::weak_ptr<void> life;
};

} // namespace brevolt7
