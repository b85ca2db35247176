// Where the view stands, and how large things are in it.
#include "nurvex7/model/queries.h"
#include "nurvex7/platform/brevolt7/element_ref.h"
#include "nurvex7/viewer/content.h"
#include "nurvex7/viewer/pixel.h"

#include <algorithm>
#include <cmath>

namespace nurvex7 {

using brevolt7::CElementRef;
using brevolt7::UpdateType;

namespace {

constexpr int STEP_IN_PIXELS = 4;
/// Added before truncation, so that what is a hair below a pixel is on it.
constexpr double PIXEL_BIAS = 0.05;

/// The range of one direction, which grows so that the view may begin anywhere.
struct Margins {
    double& before;
    double& behind;

    void BeginAt(double start, double root_from) const {
        if (start < root_from) {
            before = root_from - start;
            behind = 0;
        } else {
            before = 0;
        }
    }
    void EndBehind(double overshoot) const { behind = std::max(0.0, behind + overshoot); }
};

} // namespace

// Coordinates

CContent::position CContent::ConvertP2L(const tamsel7::point<int>& p) const {
    return {p.x / scale + GetHorzStart(), p.y / scale + GetVertStart()};
}

tamsel7::point<int> CContent::ConvertL2P(const position& p) const {
    return {to_pixel((p.x - GetHorzStart()) * scale + PIXEL_BIAS),
            to_pixel((p.y - GetVertStart()) * scale + PIXEL_BIAS)};
}

tamsel7::size<double> CContent::view_size() const {
    const tamsel7::rectangle<int> content = GetContentRect();
    return {(content.right - content.left) / scale, (content.bottom - content.top) / scale};
}

tamsel7::rectangle<double> CContent::root_rect() const {
    const Node root = graph->GetRoot();
    return MakeDRect(root.GetPosition(), root.GetSize());
}

// Scale

double CContent::GetScale() const {
    return scale;
}

void CContent::SetScale(double pixels) {
    if (pixels > 0.0 && std::isfinite(pixels)) {
        scale = pixels;
        RenewView(true);
    }
}

void CContent::SetViewWidth(double width) {
    if (width > 0.0) {
        SetScale(GetBounds().right / width);
    }
}

void CContent::SetViewHeight(double height) {
    if (height > 0.0) {
        SetScale(GetBounds().bottom / height);
    }
}

// Start: the models that were given move the view, so that the scroll bars stay in step.

void CContent::SetHorzScroll(brevolt7::IScrollModel* model) {
    CCentralPart::SetHorzScroll(model);
    focus_rubber->SetHorzScroll(model);
}

void CContent::SetVertScroll(brevolt7::IScrollModel* model) {
    CCentralPart::SetVertScroll(model);
    focus_rubber->SetVertScroll(model);
}

void CContent::SetStartX(double x) {
    if (GetHorzScroll() != nullptr) {
        GetHorzScroll()->SetStart(x);
    }
    RenewView(false);
}

void CContent::SetStartY(double y) {
    if (GetVertScroll() != nullptr) {
        GetVertScroll()->SetStart(y);
    }
    RenewView(false);
}

double CContent::GetStartX() const {
    return GetHorzStart();
}

double CContent::GetStartY() const {
    return GetVertStart();
}

double CContent::GetHorzFrom() const {
    return root_rect().left - left_margin;
}

double CContent::GetHorzTo() const {
    return root_rect().right + right_margin;
}

double CContent::GetHorzStart() const {
    return start_x;
}

void CContent::SetHorzStart(double start) {
    const Node root = graph->GetRoot();
    const double from = root.GetPosition().x;
    const double overshoot = view_size().width - root.GetSize().width - from + start - right_margin;
    const Margins margins{left_margin, right_margin};
    margins.BeginAt(start, from);
    margins.EndBehind(start > GetHorzFrom() ? overshoot : 0);
    start_x = start;
}

int CContent::GetHorzStepInPixels() const {
    return STEP_IN_PIXELS;
}

void CContent::SetHorzMeasure(std::pair<double, int> measure) {
    SetScale(measure.second / measure.first);
}

std::pair<double, int> CContent::GetHorzMeasure() const {
    return {1.0 / scale, 1};
}

double CContent::GetVertFrom() const {
    return root_rect().top - top_margin;
}

double CContent::GetVertTo() const {
    return root_rect().bottom + bottom_margin;
}

double CContent::GetVertStart() const {
    return start_y;
}

void CContent::SetVertStart(double start) {
    const Node root = graph->GetRoot();
    const double from = root.GetPosition().y;
    const double overshoot =
        view_size().height - root.GetSize().height - from + start - bottom_margin;
    const Margins margins{top_margin, bottom_margin};
    margins.BeginAt(start, from);
    margins.EndBehind(start > GetVertFrom() ? overshoot : 0);
    start_y = start;
}

int CContent::GetVertStepInPixels() const {
    return STEP_IN_PIXELS;
}

void CContent::SetVertMeasure(std::pair<double, int> measure) {
    SetScale(measure.second / measure.first);
}

std::pair<double, int> CContent::GetVertMeasure() const {
    return {1.0 / scale, 1};
}

// News of the view

void CContent::emit_view() {
    const tamsel7::size<double> view = view_size();
    OnChangeView({start_x, start_y}, {start_x + view.width, start_y + view.height});
}

void CContent::RenewView(bool invalidate) {
    const CElementRef self(this);
    emit_view();
    if (self) {
        if (invalidate) {
            Invalidate();
        }
        OnChange(this, UpdateType::UPDATE_REPAINT);
    }
}

void CContent::SetPos(const tamsel7::rectangle<int>& place, bool repaint) {
    const CElementRef self(this);
    CCentralPart::SetPos(place, repaint);
    if (self) {
        emit_view();
    }
}

} // namespace nurvex7
