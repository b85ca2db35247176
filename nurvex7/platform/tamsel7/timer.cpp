#include "nurvex7/platform/tamsel7/timer.h"

#include <algorithm>

namespace tamsel7 {

INotify::~INotify() = default;

IEventSender::~IEventSender() = default;

CTimer::CTimer(int interval_in_milliseconds) : interval(interval_in_milliseconds) {}

CTimer::~CTimer() {
    if (destroyed != nullptr) {
        *destroyed = true;
    }
    for (ITimerNotify* const who : subscribers) {
        if (who != nullptr) {
            who->NoticeStopped(this);
        }
    }
}

void CTimer::Attach(ITimerNotify* who) {
    if (std::find(subscribers.begin(), subscribers.end(), who) == subscribers.end()) {
        subscribers.push_back(who);
        who->NoticeStarted(this);
    }
}

void CTimer::Detach(INotify* who) {
    const auto found = std::find(subscribers.begin(), subscribers.end(), who);
    if (found == subscribers.end()) {
        return;
    }
    // A tick that runs walks the list by index, so an entry only goes when none does.
    if (destroyed != nullptr) {
        *found = nullptr;
    } else {
        subscribers.erase(found);
    }
    who->NoticeStopped(this);
}

bool CTimer::HasSubscribers() const {
    return std::any_of(subscribers.begin(), subscribers.end(),
                       [](const ITimerNotify* who) { return who != nullptr; });
}

void CTimer::Tick() {
    // A tick within a tick, from a subscriber that runs an event loop of its own: the outer one is
    // not over yet, so its subscribers wait.
    if (destroyed != nullptr) {
        return;
    }
    bool died = false;
    destroyed = &died;
    const std::size_t count = subscribers.size();
    for (std::size_t i = 0; i < count && !died; ++i) {
        if (subscribers[i] != nullptr) {
            CTimerEvent event{this, interval};
            subscribers[i]->OnTimer(&event);
        }
    }
    if (!died) {
        destroyed = nullptr;
        std::erase(subscribers, nullptr);
    }
}

} // namespace tamsel7
