#include "nurvex7/foundation/signal.h"
#include "nurvex7/platform/corvane2/assertion.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

// Who is called in which order, whoever comes, goes or dies in a call, is compared with a naive
// model elsewhere; here stands what that model does not look at.
namespace {

using corvane2::_internal::signal_t;
using corvane2::_internal::subscriber_base_t;

struct reported {
    std::string expression;
    std::string path;
    int line;
    std::string function;
};

std::vector<reported> reports;

class Signals : public testing::Test {
protected:
    void SetUp() override {
        reports.clear();
        before = corvane2::set_assertion_handler(
            [](const char* expression, const char* path, int line, const char* function) {
                reports.push_back({expression, path, line, function});
            });
    }
    void TearDown() override { corvane2::set_assertion_handler(before); }

private:
    corvane2::assertion_handler_t before = nullptr;
};

// Lets a test count entries, dead ones included.
struct probe_signal : signal_t<int> {
    std::size_t entries() const { return connections.size(); }
    void forget_without_a_word() { connections.clear(); }
};

struct receiver : subscriber_base_t {
    explicit receiver(std::vector<std::string>& l, std::string n) : log(l), name(std::move(n)) {}
    void hear(int value) { note("hear", value); }
    void heed(int value) { note("heed", value); }
    void look_on(int value) const { const_cast<receiver*>(this)->note("look_on", value); }
    void note(const char* member, int value) {
        log.push_back(name + "." + member + " " + std::to_string(value));
        if (then) {
            const std::function<void()> act = then; // the receiver may die of it
            act();
        }
    }
    std::vector<std::string>& log;
    std::string name;
    std::function<void()> then;
};

using lines = std::vector<std::string>;

TEST_F(Signals, ReportASecondConnectionOfTheSameMemberAndAnUnknownOne) {
    lines log;
    probe_signal signal;
    receiver a(log, "a");
    signal.connect(&a, &receiver::look_on);
    signal.connect(&a, &receiver::look_on);
    signal.disconnect(&a, &receiver::heed);
    signal(1);
    EXPECT_EQ(log, lines{"a.look_on 1"});
    signal.disconnect(&a, &receiver::look_on);
    signal(2);
    EXPECT_EQ(log.size(), 1U);
    ASSERT_EQ(reports.size(), 2U);
    EXPECT_EQ(reports[0].expression,
              "(\"signal_t::_insert: this connection is already exists.\", false)");
    EXPECT_EQ(reports[0].line, 260);
    EXPECT_EQ(reports[0].function, "void corvane2::_internal::signal_base_t::_insert(const "
                                   "corvane2::_internal::connection_t &)");
    EXPECT_EQ(reports[1].expression,
              "(\"signal_t::disconnect: attempt to disconnect unknown connection\", "
              "subscriber_found)");
    EXPECT_EQ(reports[1].line, 275);
    EXPECT_EQ(reports[1].function, "void corvane2::_internal::signal_base_t::_erase(const "
                                   "corvane2::_internal::connection_t &)");
    for (const reported& r : reports) {
        EXPECT_EQ(r.path, "corvane2/core/config/../functor/signal");
    }
}

TEST_F(Signals, ALaterDeathOfEitherEndUndoesAConnection) {
    lines log;
    auto signal = std::make_unique<probe_signal>();
    {
        receiver gone(log, "gone");
        signal->connect(&gone, &receiver::hear);
        signal->connect(&gone, &receiver::heed);
    }
    EXPECT_EQ(signal->entries(), 0U);
    receiver stays(log, "stays");
    signal->connect(&stays, &receiver::hear);
    signal.reset();
    EXPECT_TRUE(log.empty());
}

// Deliberate: taking out one connection makes the subscriber forget the signal altogether, so its
// death leaves the other connection where it is.
TEST_F(Signals, OneDisconnectMakesTheSubscriberForgetTheSignal) {
    lines log;
    probe_signal signal;
    {
        receiver a(log, "a");
        signal.connect(&a, &receiver::hear);
        signal.connect(&a, &receiver::heed);
        signal.disconnect(&a, &receiver::hear);
        EXPECT_EQ(signal.entries(), 1U);
    }
    EXPECT_EQ(signal.entries(), 1U);
    signal.forget_without_a_word();
}

// The inner call gives the lock back, the outer one deletes it; neither touches the signal.
TEST_F(Signals, ANestedCallMayDestroyTheSignal) {
    for (const bool throwing : {false, true}) {
        lines log;
        auto signal = std::make_unique<probe_signal>();
        receiver a(log, "a");
        receiver b(log, "b");
        signal->connect(&a, &receiver::hear);
        signal->connect(&b, &receiver::hear);
        a.then = [&] {
            if (log.size() == 1) {
                (*signal)(2);
            } else {
                signal.reset();
                if (throwing) {
                    throw std::runtime_error("after the end");
                }
            }
        };
        if (throwing) {
            EXPECT_THROW((*signal)(1), std::runtime_error);
        } else {
            (*signal)(1);
        }
        EXPECT_EQ(log, (lines{"a.hear 1", "a.hear 2"}));
    }
}

TEST_F(Signals, OnlyTheOutermostCallSweeps) {
    lines log;
    probe_signal signal;
    receiver a(log, "a");
    receiver b(log, "b");
    signal.connect(&a, &receiver::hear);
    signal.connect(&b, &receiver::hear);
    std::size_t after_inner = 0;
    a.then = [&] {
        if (log.size() == 1) {
            signal.disconnect(&b, &receiver::hear);
            signal(2);
            after_inner = signal.entries();
        }
    };
    signal(1);
    EXPECT_EQ(log, (lines{"a.hear 1", "a.hear 2"}));
    EXPECT_EQ(after_inner, 2U);
    EXPECT_EQ(signal.entries(), 1U);
}

// Were the lock still held, the other thread would wait for ever.
TEST_F(Signals, AnExceptionLeavesTheSignalUnlockedAndSwept) {
    lines log;
    probe_signal signal;
    receiver a(log, "a");
    receiver b(log, "b");
    signal.connect(&a, &receiver::hear);
    signal.connect(&b, &receiver::hear);
    a.then = [&] {
        signal.disconnect(&a, &receiver::hear);
        throw std::runtime_error("no");
    };
    EXPECT_THROW(signal(1), std::runtime_error);
    EXPECT_EQ(signal.entries(), 1U);
    std::thread([&] { signal(2); }).join();
    EXPECT_EQ(log, (lines{"a.hear 1", "b.hear 2"}));
}

TEST_F(Signals, ASignalPassesAnotherOn) {
    lines log;
    probe_signal source;
    auto middle = std::make_unique<probe_signal>();
    receiver a(log, "a");
    source.connect(middle.get());
    middle->connect(&a, &receiver::hear);
    source(1);
    middle.reset();
    source(2);
    EXPECT_EQ(log, lines{"a.hear 1"});
    EXPECT_EQ(source.entries(), 0U);
}

TEST_F(Signals, ReachAMemberOfASecondBase) {
    struct listener {
        virtual ~listener() = default;
        void listen(int value) { heard += value; }
        int heard = 0;
    };
    struct element : subscriber_base_t, listener {};
    probe_signal signal;
    element e;
    signal.connect(&e, &listener::listen);
    signal(5);
    EXPECT_EQ(e.heard, 5);
}

} // namespace
