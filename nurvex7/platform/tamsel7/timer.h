#pragma once

#include "nurvex7/export.h"

#include <vector>

namespace tamsel7 {

class IEventSender;

/// One tick of a timer.
struct CTimerEvent {
    IEventSender* sender = nullptr;
    int interval = 0; ///< milliseconds from one tick to the next
};

/// What hears that a sender begins or ends to notify it.
class NURVEX7_API INotify {
public:
    virtual ~INotify();
    virtual void NoticeStarted(IEventSender* sender) = 0;
    virtual void NoticeStopped(IEventSender* sender) = 0;
};

/// What hears the ticks of a timer.
class NURVEX7_API ITimerNotify : public INotify {
public:
    virtual void OnTimer(CTimerEvent* event) = 0;
};

/// What notifies others.
class NURVEX7_API IEventSender {
public:
    virtual ~IEventSender();
    /// Ends the notification of one; who was never notified is no matter.
    virtual void Detach(INotify* who) = 0;
};

/// Keeps the senders that notify this object, and leaves them all when it dies.
template <typename T>
class CSubscriber : public T {
public:
    CSubscriber() = default;
    CSubscriber(const CSubscriber&) = delete;
    CSubscriber& operator=(const CSubscriber&) = delete;
    ~CSubscriber() override {
        while (!senders.empty()) {
            IEventSender* const sender = senders.back();
            senders.pop_back();
            sender->Detach(this);
        }
    }

    void NoticeStarted(IEventSender* sender) override { senders.push_back(sender); }
    void NoticeStopped(IEventSender* sender) override { std::erase(senders, sender); }

private:
    std::vector<IEventSender*> senders;
};

/// A timer without a clock: its owner sees to it that Tick is called every `interval` while it has
/// subscribers.
class NURVEX7_API CTimer final : public IEventSender {
public:
    explicit CTimer(int interval_in_milliseconds);
    CTimer(const CTimer&) = delete;
    CTimer& operator=(const CTimer&) = delete;
    ~CTimer() override;

    /// Begins to notify; a second time changes nothing.
    void Attach(ITimerNotify* who);
    void Detach(INotify* who) override;
    bool HasSubscribers() const;
    int GetInterval() const { return interval; }

    /// Calls every subscriber once.
    ///
    /// Order   of attachment; who attaches meanwhile is reached by the next tick. Subscribers may
    ///         detach, die, or destroy the timer.
    void Tick();

private:
    std::vector<ITimerNotify*> subscribers; ///< null where one left during a tick
    int interval;
    bool* destroyed = nullptr; ///< of the tick that runs, to be told when the timer dies
};

} // namespace tamsel7
