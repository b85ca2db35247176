// The bodies that elements override.
#include "nurvex7/platform/brevolt7/clipboard.h"
#include "nurvex7/platform/brevolt7/visual_element.h"
#include "nurvex7/platform/tamsel7/palette.h"

#include <algorithm>
#include <vector>

namespace brevolt7 {

using tamsel7::MouseButton;

namespace {

/// An element and what it owns, in the order of the tab key, without what takes no events.
void collect(CVisualElement* element, std::vector<CVisualElement*>& all) {
    if (!element->IsVisible() || !element->IsEnabled()) {
        return;
    }
    all.push_back(element);
    for (CVisualElement* const child : element->GetChildren()) {
        collect(child, all);
    }
}

/// A container with a focus target is no stop: the target is one.
bool is_tab_stop(const CVisualElement* element) {
    const tamsel7::rectangle<int> bounds = element->GetBounds();
    return element->TakesFocus() && element->focus_target == nullptr &&
           (bounds.right > 1 || bounds.bottom > 1);
}

/// The first stop in a range of elements, or null.
template <typename Iterator>
CVisualElement* first_stop(Iterator begin, Iterator end) {
    const auto found = std::find_if(begin, end, is_tab_stop);
    return found != end ? *found : nullptr;
}

std::vector<CVisualElement*> all_inside(CVisualElement* element) {
    std::vector<CVisualElement*> all;
    collect(element, all);
    return all;
}

} // namespace

CVisualElement* CVisualElement::GetFirstTabElement() {
    const std::vector<CVisualElement*> all = all_inside(this);
    return first_stop(all.begin(), all.end());
}

CVisualElement* CVisualElement::GetLastTabElement() {
    const std::vector<CVisualElement*> all = all_inside(this);
    return first_stop(all.rbegin(), all.rend());
}

CVisualElement* CVisualElement::GetNextTabElement(CVisualElement* current) {
    const std::vector<CVisualElement*> all = all_inside(this);
    const auto found = std::find(all.begin(), all.end(), current);
    return found != all.end() ? first_stop(found + 1, all.end()) : nullptr;
}

CVisualElement* CVisualElement::GetPrevTabElement(CVisualElement* current) {
    const std::vector<CVisualElement*> all = all_inside(this);
    const auto found = std::find(all.rbegin(), all.rend(), current);
    return found != all.rend() ? first_stop(found + 1, all.rend()) : nullptr;
}

tamsel7::_color CVisualElement::GetBkColor() const {
    if (bk_color.is_default == 0) {
        return bk_color;
    }
    return parent != nullptr
               ? parent->GetBkColor()
               : tamsel7::GetSysPalette().GetColor(tamsel7::SysPalette::VIEW_BACKGROUND);
}

tamsel7::_color CVisualElement::GetFgColor() const {
    if (fg_color.is_default == 0) {
        return fg_color;
    }
    return parent != nullptr ? parent->GetFgColor() : tamsel7::_color(0, 0, 0);
}

bool CVisualElement::IsFullRepainted() const {
    return true;
}

bool CVisualElement::IsTransparent() const {
    return false;
}

tamsel7::rectangle<int> CVisualElement::GetDrawBounds() const {
    return {};
}

bool CVisualElement::IsCopyToClipboardEnabled() const {
    return false;
}

void CVisualElement::DrawContent(tamsel7::IPainter* /*painter*/) {}

bool CVisualElement::HandleGetBkImage(tamsel7::tamsel_ptr<tamsel7::IRasterPicture>& /*picture*/,
                                      tamsel7::_color& /*color*/,
                                      tamsel7::rectangle<int>& /*area*/) {
    return false;
}

void CVisualElement::UpdateElement() {}

bool CVisualElement::ScrollContent(int /*dx*/, int /*dy*/) {
    return false;
}

bool CVisualElement::IsScrollableOnSetPos() const {
    return true;
}

void CVisualElement::ProcessSetControl(IControl* /*control*/) {}

void CVisualElement::AfterSetControl() {}

void CVisualElement::SetCoordSystem(tamsel7::IPainter* /*painter*/) {}

void CVisualElement::SysColorsChanged() {}

void CVisualElement::AttributeChanged() {
    OnChange(this, UpdateType::UPDATE_REPAINT);
}

void CVisualElement::ProcessSetVisible(bool /*visible*/) {}

void CVisualElement::ProcessSetParentVisible(bool /*visible*/) {}

void CVisualElement::AddNewChild(CVisualElement* /*child*/) {}

void CVisualElement::ChangeParent(CVisualElement* /*old*/) {}

bool CVisualElement::HandleMouseMove(int /*x*/, int /*y*/, int /*flags*/, MouseButton /*button*/) {
    return false;
}

bool CVisualElement::HandleButtonDown(int /*x*/, int /*y*/, int /*flags*/, MouseButton /*button*/) {
    return false;
}

bool CVisualElement::HandleButtonUp(int /*x*/, int /*y*/, int /*flags*/, MouseButton /*button*/) {
    return false;
}

bool CVisualElement::HandleClick(int /*x*/, int /*y*/, int /*flags*/, MouseButton /*button*/) {
    return false;
}

bool CVisualElement::HandleDoubleClick(int /*x*/, int /*y*/, int /*flags*/,
                                       MouseButton /*button*/) {
    return false;
}

bool CVisualElement::HandleWheel(int /*x*/, int /*y*/, int /*flags*/, MouseButton /*button*/,
                                 int /*distance*/) {
    return false;
}

void CVisualElement::HandleMouseHover(CVisualElement* /*who*/) {}

void CVisualElement::HandleMouseLeave(CVisualElement* /*who*/) {}

void CVisualElement::HandleChildrenMouseHover(CVisualElement* /*who*/) {}

void CVisualElement::HandleChildrenMouseLeave(CVisualElement* /*who*/) {}

bool CVisualElement::HandleKeyDown(int /*flags*/, int /*key*/) {
    return false;
}

bool CVisualElement::HandleKeyUp(int /*flags*/, int /*key*/) {
    return false;
}

bool CVisualElement::HandleChar(char /*byte*/) {
    return false;
}

bool CVisualElement::HandleOnTooltip(tamsel7::CTooltipEvent* /*event*/) {
    return false;
}

bool CVisualElement::HandleOnTooltipTrack(tamsel7::CTooltipEvent* /*event*/) {
    return false;
}

bool CVisualElement::HandleContextMenu(int /*x*/, int /*y*/) {
    return false;
}

void CVisualElement::HandleGetFocus(CVisualElement* who, bool flag) {
    if (!flag && focus_target != nullptr) {
        focus_target->HandleGetFocus(who, false);
    }
}

void CVisualElement::HandleLostFocus(CVisualElement* /*who*/) {}

void CVisualElement::HandleChildFocusChanged(CVisualElement* /*child*/, CVisualElement* /*other*/,
                                             bool /*gained*/) {}

void CVisualElement::HandleControlChangeFocus(bool /*focused*/) {}

void CVisualElement::HandleControlDestroy() {}

void CVisualElement::HandleRefreshPos() {}

void CVisualElement::ProcessChange(CVisualElement** /*who*/) {}

void CVisualElement::BeforeProcessChange(CVisualElement* /*who*/, UpdateType /*type*/) {}

bool CVisualElement::IsControlFocused() const {
    return control != nullptr && control->IsFocused();
}

std::string CVisualElement::HandleAsString() const {
    return {};
}

void CVisualElement::HandleCopyToClipboard() const {
    CopyToClipboard(this);
}

void CVisualElement::HandleCaptureLost() {}

void CVisualElement::CaptureMouse() {
    if (control != nullptr) {
        control->SetCapture(this);
    }
}

void CVisualElement::ReleaseMouse() {
    if (control != nullptr) {
        control->ReleaseCapture(this);
    }
}

} // namespace brevolt7
