#pragma once

#include "nurvex7/export.h"
#include "nurvex7/foundation/signal.h"

namespace nurvex7 {

class IViewer;

/// What shows a whole graph beside a viewer and steers that viewer.
///
/// Space   graph
class NURVEX7_API IOverview {
public:
    /// For applications; the library never emits it.
    corvane2::_internal::signal_t<> OnOverviewChange;

    /// Duty    the viewer lives until another one, or null, is set
    virtual void SetViewer(IViewer* viewer) = 0;
    virtual IViewer* GetViewer() const = 0;
    virtual void SetStartX(double x) = 0;
    virtual void SetStartY(double y) = 0;
    virtual void SetViewWidth(double width) = 0;
    virtual void SetViewHeight(double height) = 0;
    virtual ~IOverview();
};

} // namespace nurvex7
