#include "nurvex7/platform/tamsel7/timer.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tamsel7 {
namespace {

class Clock : public CSubscriber<ITimerNotify> {
public:
    Clock(std::string given_name, std::vector<std::string>& given_log)
        : name(std::move(given_name)), log(given_log) {}
    std::function<void()> act;
    void OnTimer(CTimerEvent*) override {
        log.push_back(name);
        if (act) {
            const std::function<void()> todo = act;
            todo();
        }
    }

private:
    std::string name;
    std::vector<std::string>& log;
};

/// Three subscribers; the second one does something in its tick. What is seen in that tick and in
/// the one after it.
TEST(Timer, SubscribersMayDoAnythingInATick) {
    struct Stage {
        std::vector<std::string> log;
        std::unique_ptr<CTimer> timer = std::make_unique<CTimer>(50);
        std::unique_ptr<Clock> a = std::make_unique<Clock>("a", log);
        std::unique_ptr<Clock> b = std::make_unique<Clock>("b", log);
        std::unique_ptr<Clock> c = std::make_unique<Clock>("c", log);
        Clock late{"late", log};
    };
    struct Case {
        const char* what;
        std::function<void(Stage&)> act;
        std::vector<std::string> seen;
    };
    const Case cases[] = {
        {"nothing", [](Stage&) {}, {"a", "b", "c", "a", "b", "c"}},
        {"leaves", [](Stage& s) { s.timer->Detach(s.b.get()); }, {"a", "b", "c", "a", "c"}},
        {"dies", [](Stage& s) { s.b.reset(); }, {"a", "b", "c", "a", "c"}},
        {"an earlier one dies", [](Stage& s) { s.a.reset(); }, {"a", "b", "c", "b", "c"}},
        {"a later one dies", [](Stage& s) { s.c.reset(); }, {"a", "b", "a", "b"}},
        {"another comes",
         [](Stage& s) { s.timer->Attach(&s.late); },
         {"a", "b", "c", "a", "b", "c", "late"}},
        {"ticks again", [](Stage& s) { s.timer->Tick(); }, {"a", "b", "c", "a", "b", "c"}},
        {"destroys the timer", [](Stage& s) { s.timer.reset(); }, {"a", "b"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Stage stage;
        for (Clock* const clock : {stage.a.get(), stage.b.get(), stage.c.get(), stage.a.get()}) {
            stage.timer->Attach(clock); // one of them twice, which changes nothing
        }
        stage.b->act = [&] { c.act(stage); };
        for (int i = 0; i < 2 && stage.timer; ++i) {
            stage.timer->Tick();
        }
        EXPECT_EQ(stage.log, c.seen);
        if (stage.timer) {
            stage.a.reset();
            stage.b.reset();
            stage.c.reset();
            stage.timer->Detach(&stage.late);
            EXPECT_FALSE(stage.timer->HasSubscribers());
        }
    }
}

} // namespace
} // namespace tamsel7
