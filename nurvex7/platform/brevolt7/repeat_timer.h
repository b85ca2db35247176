#pragma once

#include "nurvex7/export.h"
#include "nurvex7/platform/tamsel7/timer.h"

namespace brevolt7 {

class IControl;

/// What hears the repeat timer of its control.
class NURVEX7_API CRepeatTimerNotify : public tamsel7::CSubscriber<tamsel7::ITimerNotify> {
public:
    void OnTimer(tamsel7::CTimerEvent* event) override;
    virtual void OnRepeatTimer(tamsel7::CTimerEvent* event) = 0;
};

/// What does something again and again while a button is held down on it.
class NURVEX7_API CRepeatableOperation : public CRepeatTimerNotify {
public:
    /// Begins to be called at every tick of the control's repeat timer.
    void StartRepeat(IControl* control);
    /// Without effect where nothing repeats. Leaving the control stops it too.
    void StopRepeat();

    void OnRepeatTimer(tamsel7::CTimerEvent* event) override;
    virtual void ProcessRepeatOperation() = 0;
    void NoticeStopped(tamsel7::IEventSender* sender) override;

private:
    tamsel7::IEventSender* repeat_timer = nullptr;
};

} // namespace brevolt7
