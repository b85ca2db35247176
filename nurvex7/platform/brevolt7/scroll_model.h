#pragma once

#include "nurvex7/export.h"

#include <utility>

namespace brevolt7 {

/// One direction of something that scrolls: its range, where the view stands, and its scale.
///
/// Space   logical; a measure is a pair (logical length, pixels): so many units show on so many
///         pixels
class NURVEX7_API IScrollModel {
public:
    virtual ~IScrollModel();
    virtual double GetFrom() const = 0;
    virtual double GetTo() const = 0;
    virtual void SetStart(double start) = 0;
    /// The coordinate of the view's first pixel.
    virtual double GetStart() const = 0;
    /// The least distance that a step scrolls. Space: pixel.
    virtual int GetMinScrollDistance() const = 0;
    virtual bool IsFixedStepSize() const = 0;
    /// The step at a coordinate.
    virtual double GetStepSize(double at) const = 0;
    virtual void SetStepSize(double at, double step) const = 0;
    virtual void SetMeasure(std::pair<double, int> measure) = 0;
    virtual std::pair<double, int> GetMeasure() const = 0;
    virtual bool IsInseparableStep() const;
    /// Brings what shows the model up to date with it.
    virtual void Update();
};

/// A model whose steps are one unit everywhere.
class NURVEX7_API ISimpleScrollModel : public IScrollModel {
public:
    bool IsFixedStepSize() const override;
    double GetStepSize(double at) const override;
    void SetStepSize(double at, double step) const override;
};

/// The horizontal model of a class that implements both directions: the operations carry the
/// direction in their names.
class NURVEX7_API IHorzSimpleScrollModel : public ISimpleScrollModel {
public:
    virtual double GetHorzFrom() const = 0;
    virtual double GetHorzTo() const = 0;
    virtual void SetHorzStart(double start) = 0;
    virtual double GetHorzStart() const = 0;
    virtual int GetHorzStepInPixels() const = 0;
    virtual void SetHorzMeasure(std::pair<double, int> measure) = 0;
    virtual std::pair<double, int> GetHorzMeasure() const = 0;

    double GetFrom() const override;
    double GetTo() const override;
    void SetStart(double start) override;
    double GetStart() const override;
    int GetMinScrollDistance() const override;
    void SetMeasure(std::pair<double, int> measure) override;
    std::pair<double, int> GetMeasure() const override;
};

/// The vertical model likewise.
///
/// Deliberate: only here may an implementation choose its steps, so a class with both directions
/// has its step rule fixed along x.
class NURVEX7_API IVertSimpleScrollModel : public ISimpleScrollModel {
public:
    virtual double GetVertFrom() const = 0;
    virtual double GetVertTo() const = 0;
    virtual void SetVertStart(double start) = 0;
    virtual double GetVertStart() const = 0;
    virtual int GetVertStepInPixels() const = 0;
    virtual void SetVertMeasure(std::pair<double, int> measure) = 0;
    virtual std::pair<double, int> GetVertMeasure() const = 0;
    virtual double GetVertStepSize(double at) const;
    virtual bool IsVertFixedStepSize() const;

    double GetFrom() const override;
    double GetTo() const override;
    void SetStart(double start) override;
    double GetStart() const override;
    int GetMinScrollDistance() const override;
    bool IsFixedStepSize() const override;
    double GetStepSize(double at) const override;
    void SetMeasure(std::pair<double, int> measure) override;
    std::pair<double, int> GetMeasure() const override;
};

} // namespace brevolt7
