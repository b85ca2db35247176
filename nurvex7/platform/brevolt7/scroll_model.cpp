#include "nurvex7/platform/brevolt7/scroll_model.h"

namespace brevolt7 {

IScrollModel::~IScrollModel() = default;

bool IScrollModel::IsInseparableStep() const {
    return false;
}

void IScrollModel::Update() {}

bool ISimpleScrollModel::IsFixedStepSize() const {
    return true;
}

double ISimpleScrollModel::GetStepSize(double /*at*/) const {
    return 1.0;
}

void ISimpleScrollModel::SetStepSize(double /*at*/, double /*step*/) const {}

double IHorzSimpleScrollModel::GetFrom() const {
    return GetHorzFrom();
}

double IHorzSimpleScrollModel::GetTo() const {
    return GetHorzTo();
}

void IHorzSimpleScrollModel::SetStart(double start) {
    SetHorzStart(start);
}

double IHorzSimpleScrollModel::GetStart() const {
    return GetHorzStart();
}

int IHorzSimpleScrollModel::GetMinScrollDistance() const {
    return GetHorzStepInPixels();
}

void IHorzSimpleScrollModel::SetMeasure(std::pair<double, int> measure) {
    SetHorzMeasure(measure);
}

std::pair<double, int> IHorzSimpleScrollModel::GetMeasure() const {
    return GetHorzMeasure();
}

double IVertSimpleScrollModel::GetFrom() const {
    return GetVertFrom();
}

double IVertSimpleScrollModel::GetTo() const {
    return GetVertTo();
}

void IVertSimpleScrollModel::SetStart(double start) {
    SetVertStart(start);
}

double IVertSimpleScrollModel::GetStart() const {
    return GetVertStart();
}

int IVertSimpleScrollModel::GetMinScrollDistance() const {
    return GetVertStepInPixels();
}

void IVertSimpleScrollModel::SetMeasure(std::pair<double, int> measure) {
    SetVertMeasure(measure);
}

std::pair<double, int> IVertSimpleScrollModel::GetMeasure() const {
    return GetVertMeasure();
}

double IVertSimpleScrollModel::GetVertStepSize(double /*at*/) const {
    return 1.0;
}

bool IVertSimpleScrollModel::IsVertFixedStepSize() const {
    return true;
}

bool IVertSimpleScrollModel::IsFixedStepSize() const {
    return IsVertFixedStepSize();
}

double IVertSimpleScrollModel::GetStepSize(double at) const {
    return GetVertStepSize(at);
}

} // namespace brevolt7
