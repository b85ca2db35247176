#include "nurvex7/platform/brevolt7/repeat_timer.h"

#include "nurvex7/platform/brevolt7/control.h"

namespace brevolt7 {

void CRepeatTimerNotify::OnTimer(tamsel7::CTimerEvent* event) {
    OnRepeatTimer(event);
}

void CRepeatableOperation::StartRepeat(IControl* control) {
    StopRepeat();
    if (control != nullptr) {
        repeat_timer = &control->GetRepeatTimer();
        control->GetRepeatTimer().Attach(this);
        control->RepeatTimerChanged();
    }
}

void CRepeatableOperation::StopRepeat() {
    if (repeat_timer != nullptr) {
        repeat_timer->Detach(this);
    }
}

void CRepeatableOperation::OnRepeatTimer(tamsel7::CTimerEvent* /*event*/) {
    ProcessRepeatOperation();
}

void CRepeatableOperation::NoticeStopped(tamsel7::IEventSender* sender) {
    CRepeatTimerNotify::NoticeStopped(sender);
    if (sender == repeat_timer) {
        repeat_timer = nullptr;
    }
}

} // namespace brevolt7
