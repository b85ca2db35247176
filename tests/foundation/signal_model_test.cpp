#include "nurvex7/foundation/signal.h"
#include "nurvex7/platform/corvane2/assertion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <random>
#include <string>
#include <vector>

// Signals under random connects, kills and nested calls, against a model that is naive enough to be
// read at a glance. Both follow the same plan: the action at the n-th call of any receiver.
namespace {

using corvane2::_internal::signal_t;
using corvane2::_internal::subscriber_base_t;

constexpr int SIGNALS = 3;
constexpr int RECEIVERS = 6;
constexpr int MEMBERS = 3;

enum class Kind { FIRE, CONNECT, DISCONNECT, KILL_RECEIVER, KILL_SIGNAL, THROW, NOTHING };

struct action {
    Kind kind;
    int signal;
    int receiver;
    int member;
};

struct thrown {};

std::vector<action> make_plan(std::mt19937& random, std::size_t length) {
    const std::array<Kind, 24> weights = {
        Kind::FIRE,          Kind::FIRE,       Kind::FIRE,       Kind::FIRE,    Kind::FIRE,
        Kind::FIRE,          Kind::CONNECT,    Kind::CONNECT,    Kind::CONNECT, Kind::CONNECT,
        Kind::CONNECT,       Kind::CONNECT,    Kind::CONNECT,    Kind::CONNECT, Kind::CONNECT,
        Kind::DISCONNECT,    Kind::DISCONNECT, Kind::DISCONNECT, Kind::NOTHING, Kind::NOTHING,
        Kind::KILL_RECEIVER, Kind::NOTHING,    Kind::THROW,      Kind::NOTHING};
    std::vector<action> plan;
    for (std::size_t i = 0; i < length; ++i) {
        Kind kind = weights[random() % weights.size()];
        if (random() % 150 == 0) {
            kind = Kind::KILL_SIGNAL;
        }
        plan.push_back({kind, static_cast<int>(random() % SIGNALS),
                        static_cast<int>(random() % RECEIVERS),
                        static_cast<int>(random() % MEMBERS)});
    }
    return plan;
}

// What both worlds share: the plan, and what is to be compared.
struct world {
    explicit world(const std::vector<action>& p) : plan(p) {}
    virtual ~world() = default;
    virtual void act(const action& a) = 0;

    void on_call(int receiver, int member, int signal) {
        log.push_back(std::to_string(receiver) + "." + std::to_string(member) + "<" +
                      std::to_string(signal));
        const action next = plan[log.size() % plan.size()];
        if (next.kind == Kind::THROW) {
            throw thrown();
        }
        if (depth < 4 && log.size() < 4000) {
            ++depth;
            struct leave {
                int& d;
                ~leave() { --d; }
            } const on_exit{depth};
            act(next);
        }
    }
    void run(const action& a) {
        try {
            act(a);
        } catch (const thrown&) {
            log.push_back("thrown");
        }
    }

    const std::vector<action>& plan;
    std::vector<std::string> log;
    int depth = 0;
};

struct naive_world : world {
    struct entry {
        int receiver;
        int member;
        bool live;
    };
    struct naive_signal {
        std::vector<entry> entries;
        int calls = 0;
        bool live = true;

        void sweep() {
            if (calls == 0) {
                std::erase_if(entries, [](const entry& e) { return !e.live; });
            }
        }
    };

    explicit naive_world(const std::vector<action>& p) : world(p) { receiver_live.fill(true); }

    entry* find(naive_signal& s, int receiver, int member) {
        for (entry& e : s.entries) {
            if (e.live && e.receiver == receiver && e.member == member) {
                return &e;
            }
        }
        return nullptr;
    }
    void fire(int number) {
        naive_signal& s = signals[static_cast<std::size_t>(number)];
        ++s.calls;
        const auto finish = [&] {
            --s.calls;
            s.sweep();
        };
        try {
            for (std::size_t i = 0; s.live && i < s.entries.size(); ++i) {
                const entry e = s.entries[i];
                if (e.live) {
                    on_call(e.receiver, e.member, number);
                }
            }
        } catch (...) {
            finish();
            throw;
        }
        finish();
    }
    void act(const action& a) override {
        naive_signal& s = signals[static_cast<std::size_t>(a.signal)];
        if (a.kind == Kind::KILL_RECEIVER) {
            receiver_live[static_cast<std::size_t>(a.receiver)] = false;
            for (naive_signal& any : signals) {
                for (entry& e : any.entries) {
                    e.live = e.live && e.receiver != a.receiver;
                }
                any.sweep();
            }
        }
        if (!s.live) {
            return;
        }
        if (a.kind == Kind::FIRE) {
            fire(a.signal);
        } else if (a.kind == Kind::KILL_SIGNAL) {
            s.live = false;
        } else if (receiver_live[static_cast<std::size_t>(a.receiver)]) {
            if (a.kind == Kind::CONNECT) {
                if (find(s, a.receiver, a.member) != nullptr) {
                    ++reports;
                } else {
                    s.entries.push_back({a.receiver, a.member, true});
                }
            } else if (a.kind == Kind::DISCONNECT) {
                if (find(s, a.receiver, a.member) == nullptr) {
                    ++reports;
                } else {
                    for (entry& e : s.entries) {
                        e.live = e.live && e.receiver != a.receiver;
                    }
                    s.sweep();
                }
            }
        }
    }

    std::array<naive_signal, SIGNALS> signals;
    std::array<bool, RECEIVERS> receiver_live{};
    int reports = 0;
};

int real_reports = 0;

struct real_world : world {
    struct probe_signal : signal_t<int> {
        std::size_t entries() const { return connections.size(); }
    };
    struct receiver : subscriber_base_t {
        receiver(real_world& w, int n) : home(w), number(n) {}
        void first(int signal) { home.on_call(number, 0, signal); }
        void second(int signal) { home.on_call(number, 1, signal); }
        void third(int signal) { home.on_call(number, 2, signal); }
        real_world& home;
        int number;
    };
    using member_t = void (receiver::*)(int);
    static constexpr std::array<member_t, MEMBERS> members = {&receiver::first, &receiver::second,
                                                              &receiver::third};

    explicit real_world(const std::vector<action>& p) : world(p) {
        for (auto& s : signals) {
            s = std::make_unique<probe_signal>();
        }
        for (int i = 0; i < RECEIVERS; ++i) {
            receivers[static_cast<std::size_t>(i)] = std::make_unique<receiver>(*this, i);
        }
    }
    void act(const action& a) override {
        auto& s = signals[static_cast<std::size_t>(a.signal)];
        auto& r = receivers[static_cast<std::size_t>(a.receiver)];
        if (a.kind == Kind::KILL_RECEIVER) {
            r.reset();
            connected_members(a.receiver).clear();
        } else if (s == nullptr) {
            return;
        } else if (a.kind == Kind::FIRE) {
            (*s)(a.signal);
        } else if (a.kind == Kind::KILL_SIGNAL) {
            s.reset();
        } else if (r != nullptr && a.kind == Kind::CONNECT) {
            s->connect(r.get(), members[static_cast<std::size_t>(a.member)]);
            connected_members(a.receiver).push_back({a.signal, a.member});
        } else if (r != nullptr && a.kind == Kind::DISCONNECT) {
            disconnect(*s, *r, a);
        }
    }
    // Who takes one connection of a pair out takes out all: the receiver forgets the signal with
    // the first, and could not tell it of its death any more.
    void disconnect(probe_signal& s, receiver& r, const action& a) {
        auto& known = connected_members(a.receiver);
        const auto is = [&](int member) {
            return [&, member](const std::pair<int, int>& c) {
                return c.first == a.signal && c.second == member;
            };
        };
        const bool connected = std::any_of(known.begin(), known.end(), is(a.member));
        s.disconnect(&r, members[static_cast<std::size_t>(a.member)]);
        for (int m = 0; connected && m < MEMBERS; ++m) {
            if (m != a.member && std::any_of(known.begin(), known.end(), is(m))) {
                s.disconnect(&r, members[static_cast<std::size_t>(m)]);
            }
            std::erase_if(known, is(m));
        }
    }
    std::vector<std::pair<int, int>>& connected_members(int receiver_number) {
        return connected[static_cast<std::size_t>(receiver_number)];
    }

    std::array<std::unique_ptr<probe_signal>, SIGNALS> signals;
    std::array<std::unique_ptr<receiver>, RECEIVERS> receivers;
    std::array<std::vector<std::pair<int, int>>, RECEIVERS> connected;
};

TEST(SignalsAgainstTheModel, CallTheSameReceiversInTheSameOrder) {
    const auto before = corvane2::set_assertion_handler(
        [](const char*, const char*, int, const char*) { ++real_reports; });
    std::size_t calls = 0;
    for (unsigned seed = 1; seed <= 150; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const std::vector<action> plan = make_plan(random, 997);
        const std::vector<action> steps = make_plan(random, 120);
        naive_world naive(plan);
        real_world real(plan);
        real_reports = 0;
        for (const action& step : steps) {
            naive.run(step);
            real.run(step);
            ASSERT_EQ(real.log, naive.log);
            ASSERT_EQ(real_reports, naive.reports);
            for (std::size_t i = 0; i < SIGNALS; ++i) {
                ASSERT_EQ(real.signals[i] != nullptr, naive.signals[i].live);
                if (real.signals[i] != nullptr) {
                    ASSERT_EQ(real.signals[i]->entries(), naive.signals[i].entries.size());
                }
            }
        }
        calls += real.log.size();
    }
    EXPECT_GT(calls, 10'000U) << "the plans have to reach deep enough to mean anything";
    corvane2::set_assertion_handler(before);
}

} // namespace
