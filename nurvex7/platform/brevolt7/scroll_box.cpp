#include "nurvex7/platform/brevolt7/scroll_box.h"

#include "nurvex7/platform/brevolt7/scroll_bar.h"
#include "nurvex7/platform/tamsel7/painter.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace brevolt7 {

namespace {

constexpr int PIXELS_A_NOTCH = 48;
/// A distance in pixels this close to a whole number can be scrolled by moving pixels.
constexpr double WHOLE_PIXEL = 1e-6;
constexpr tamsel7::_color CORNER(240, 240, 240);

} // namespace

/// The model that the pane and the bars of one direction share.
class CScrollBox::WrappedModel final : public IScrollModel {
public:
    WrappedModel(CScrollBox& owner, bool along_x) : horizontal(along_x), box(owner) {}

    double GetFrom() const override { return Inner() != nullptr ? Inner()->GetFrom() : 0; }
    double GetTo() const override { return Inner() != nullptr ? Inner()->GetTo() : 0; }
    void SetStart(double start) override { box.scroll_to(*this, start); }
    double GetStart() const override { return Inner() != nullptr ? Inner()->GetStart() : 0; }
    int GetMinScrollDistance() const override {
        return Inner() != nullptr ? Inner()->GetMinScrollDistance() : 1;
    }
    bool IsFixedStepSize() const override {
        return Inner() == nullptr || Inner()->IsFixedStepSize();
    }
    double GetStepSize(double at) const override {
        return Inner() != nullptr ? Inner()->GetStepSize(at) : 1.0;
    }
    void SetStepSize(double at, double step) const override {
        if (Inner() != nullptr) {
            Inner()->SetStepSize(at, step);
        }
    }
    void SetMeasure(std::pair<double, int> measure) override {
        if (Inner() != nullptr) {
            Inner()->SetMeasure(measure);
            Update();
        }
    }
    std::pair<double, int> GetMeasure() const override {
        return Inner() != nullptr ? Inner()->GetMeasure() : std::pair<double, int>(1.0, 1);
    }
    bool IsInseparableStep() const override {
        return Inner() != nullptr && Inner()->IsInseparableStep();
    }
    /// The bars follow in the next pass.
    void Update() override {
        if (box.GetControl() != nullptr) {
            box.GetControl()->ScheduleRepaint();
        }
    }

    double UnitsAPixel() const {
        const auto [length, pixels] = GetMeasure();
        return pixels > 0 ? length / pixels : 1.0;
    }

    void SetInner(IScrollModel* model) { inner = model; }
    /// The pane's model; a pane that has died takes its models along.
    IScrollModel* Inner() const { return box.has_pane && !box.pane ? nullptr : inner; }

    const bool horizontal;

private:
    CScrollBox& box;
    IScrollModel* inner = nullptr;
};

CScrollBox::CScrollBox(CVisualElement* parent_element, const tamsel7::size<int>& size,
                       Alignment alignment)
    : CCentralPart(parent_element, size, alignment),
      vert(std::make_unique<WrappedModel>(*this, false)),
      horz(std::make_unique<WrappedModel>(*this, true)), vert_bar(new CScrollBar(this, false)),
      horz_bar(new CScrollBar(this, true)) {
    vert_bar->SetModel(vert.get());
    horz_bar->SetModel(horz.get());
    vert_bar->OnScroll.connect(this, &CScrollBox::HandleBarScroll);
    horz_bar->OnScroll.connect(this, &CScrollBox::HandleBarScroll);
    place_parts();
}

CScrollBox::~CScrollBox() {
    // The pane and the bars hold the wrapped models.
    DeleteChildren();
}

void CScrollBox::SetCentralPane(CVisualElement* new_pane) {
    pane = CElementRef(new_pane);
    has_pane = new_pane != nullptr;
    focus_target = new_pane;
    place_parts();
    // A pane that is made inside the box is placed before its subclass exists.
    if (new_pane != nullptr) {
        new_pane->SetPos(new_pane->GetPos(), false);
    }
}

void CScrollBox::SetVertScroll(IScrollModel* model) {
    CCentralPart::SetVertScroll(model);
    vert->SetInner(model);
    vert->Update();
}

void CScrollBox::SetHorzScroll(IScrollModel* model) {
    CCentralPart::SetHorzScroll(model);
    horz->SetInner(model);
    horz->Update();
}

IScrollModel* CScrollBox::GetWrappedVertScroll() const {
    return vert.get();
}

IScrollModel* CScrollBox::GetWrappedHorzScroll() const {
    return horz.get();
}

// Places

tamsel7::rectangle<int> CScrollBox::GetContentRect() const {
    const tamsel7::rectangle<int> bounds = GetBounds();
    const int right =
        vert_bar->IsVisible() ? bounds.right - vert_bar->GetThickness() : bounds.right;
    const int bottom =
        horz_bar->IsVisible() ? bounds.bottom - horz_bar->GetThickness() : bounds.bottom;
    return {0, 0, std::max(0, right), std::max(0, bottom)};
}

void CScrollBox::ProcessRearrange(CVisualElement** who) {
    place_parts();
    *who = nullptr;
}

/// Shows the bars that are needed and gives the pane the rest. A bar takes room, for which the
/// other one may be needed.
void CScrollBox::place_parts() {
    // The first child comes while the box is made.
    if (vert == nullptr || horz_bar == nullptr || placing) {
        return;
    }
    placing = true;
    const tamsel7::rectangle<int> bounds = GetBounds();
    const auto shows = [](int policy, const WrappedModel& wrapped, int pixels) {
        return policy == BAR_ALWAYS ||
               (policy != BAR_HIDDEN &&
                ScrollState::Of(wrapped.Inner(), pixels).IsScrollable(wrapped.Inner()));
    };
    bool below = shows(horz_bar_policy, *horz, bounds.right);
    const int height = std::max(0, bounds.bottom - (below ? horz_bar->GetThickness() : 0));
    const bool beside = shows(vert_bar_policy, *vert, height);
    const int width = std::max(0, bounds.right - (beside ? vert_bar->GetThickness() : 0));
    below = below || shows(horz_bar_policy, *horz, width);
    vert_bar->SetVisible(beside);
    horz_bar->SetVisible(below);
    const tamsel7::rectangle<int> content = GetContentRect();
    vert_bar->SetPos({content.right, 0, bounds.right, content.bottom}, false);
    horz_bar->SetPos({0, content.bottom, content.right, bounds.bottom}, false);
    const CElementRef self(this);
    // Every pass comes here, and a pane may tell others of each SetPos.
    if (pane && pane->parent == this && !(pane->GetPos() == content)) {
        pane->SetPos(content, false);
    }
    if (self) {
        placing = false;
    }
}

void CScrollBox::UpdateElement() {
    place_parts();
}

void CScrollBox::DrawContent(tamsel7::IPainter* painter) {
    const tamsel7::rectangle<int> content = GetContentRect();
    const tamsel7::rectangle<int> bounds = GetBounds();
    if (vert_bar->IsVisible() && horz_bar->IsVisible()) {
        painter->SetBrush({vert_bar->IsPainted() ? CORNER : GetBkColor(), 1});
        painter->FillRect(content.right, content.bottom, bounds.right, bounds.bottom);
    }
}

// Scrolling

void CScrollBox::scroll_to(WrappedModel& wrapped, double start) {
    IScrollModel* const model = wrapped.Inner();
    if (model == nullptr) {
        return;
    }
    const double before = model->GetStart();
    model->SetStart(start);
    const double shift = (before - model->GetStart()) / wrapped.UnitsAPixel();
    wrapped.Update();
    if (!pane || shift == 0) {
        return;
    }
    const double whole = std::round(shift);
    constexpr double far = 1 << 20;
    const int distance = std::abs(whole) < far ? static_cast<int>(whole) : 0;
    const bool by_pixels = distance != 0 && std::abs(shift - whole) < WHOLE_PIXEL;
    if (!by_pixels || !pane->ScrollContent(wrapped.horizontal ? distance : 0,
                                           wrapped.horizontal ? 0 : distance)) {
        pane->Invalidate();
    }
}

/// Scrolls as far as the range allows; a view that stands outside it stays where it is rather than
/// jump. True where it has scrolled.
bool CScrollBox::scroll_by_user(WrappedModel& wrapped, double start) {
    if (wrapped.Inner() == nullptr) {
        return false;
    }
    const tamsel7::rectangle<int> content = GetContentRect();
    const int pixels = wrapped.horizontal ? content.right : content.bottom;
    const ScrollState state = ScrollState::Of(wrapped.Inner(), pixels);
    const double target =
        std::clamp(start, state.from, std::max(state.from, state.to - state.span));
    if (target == state.start) {
        return false;
    }
    scroll_to(wrapped, target);
    if (pane) {
        pane->SetPos(pane->GetPos(), false);
    }
    return true;
}

void CScrollBox::HandleBarScroll(CScrollBar* bar, double start) {
    scroll_by_user(bar == vert_bar ? *vert : *horz, start);
}

bool CScrollBox::HandleWheel(int /*x*/, int /*y*/, int flags, tamsel7::MouseButton /*button*/,
                             int distance) {
    if ((flags & FLAG_CONTROL) != 0) {
        return false;
    }
    WrappedModel& wrapped = (flags & FLAG_SHIFT) != 0 ? *horz : *vert;
    const double pixels = std::round(distance * PIXELS_A_NOTCH / static_cast<double>(WHEEL_NOTCH));
    return scroll_by_user(wrapped, wrapped.GetStart() - pixels * wrapped.UnitsAPixel());
}

bool CScrollBox::HandleKeyDown(int flags, int key) {
    WrappedModel& wrapped = (flags & FLAG_CONTROL) != 0 ? *horz : *vert;
    const tamsel7::rectangle<int> content = GetContentRect();
    const double page =
        (wrapped.horizontal ? content.right : content.bottom) * wrapped.UnitsAPixel();
    switch (key) {
    case KEY_PAGE_UP:
        return scroll_by_user(wrapped, wrapped.GetStart() - page);
    case KEY_PAGE_DOWN:
        return scroll_by_user(wrapped, wrapped.GetStart() + page);
    case KEY_HOME:
        return scroll_by_user(wrapped, wrapped.GetFrom());
    case KEY_END:
        return scroll_by_user(wrapped, wrapped.GetTo());
    default:
        return false;
    }
}

} // namespace brevolt7
