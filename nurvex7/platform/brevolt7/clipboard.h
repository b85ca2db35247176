#pragma once

#include "nurvex7/export.h"

namespace brevolt7 {

class CVisualElement;

/// Puts the element on the clipboard: its HandleAsString, and a picture of what it shows. Nothing
/// happens where it stands in no window.
NURVEX7_API void CopyToClipboard(const CVisualElement* element);

} // namespace brevolt7
