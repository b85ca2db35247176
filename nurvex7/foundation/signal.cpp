#include "nurvex7/foundation/signal.h"

#include "nurvex7/platform/corvane2/assertion.h"

#include <algorithm>

namespace corvane2::_internal {

namespace {
// What an assertion reports of itself is part of the platform's log format, so the texts stay as
// they are, wherever this file lies.
constexpr const char* ASSERTION_PATH = "corvane2/core/config/../functor/signal";

void _sweep(std::list<connection_t>& connections) {
    connections.remove_if([](const connection_t& c) { return c.subscriber == nullptr; });
}
} // namespace

bool same_connection(const connection_t& a, const connection_t& b) {
    return a.target_object == b.target_object && a.function.bytes == b.function.bytes;
}

subscriber_base_t::subscriber_base_t() = default;

subscriber_base_t::subscriber_base_t(const subscriber_base_t&) {}

subscriber_base_t::~subscriber_base_t() {
    threading::mutex_guard_t guard(subscriber_mutex);
    for (signal_base_t* const signal : signals) {
        signal->on_subscriber_destroy(this);
    }
    signals.clear();
}

signal_base_t::signal_base_t() : signal_mutex(new threading::mutex_t) {}

signal_base_t::~signal_base_t() {
    if (call_state != nullptr) {
        *call_state = false;
    }
    _erase_all();
    if (call_state == nullptr) {
        delete signal_mutex;
        signal_mutex = nullptr;
    }
}

std::list<connection_t>::iterator signal_base_t::find(const connection_t& c) {
    return std::find_if(connections.begin(), connections.end(),
                        [&](const connection_t& entry) { return same_connection(entry, c); });
}

void signal_base_t::forget_in(subscriber_base_t* s) {
    threading::mutex_guard_t guard(s->subscriber_mutex);
    s->signals.remove(this);
}

void signal_base_t::_insert(const connection_t& c) {
    threading::mutex_guard_t guard(*signal_mutex);
    if (find(c) != connections.end()) {
        corvane2::assertion_failed(
            "(\"signal_t::_insert: this connection is already exists.\", false)", ASSERTION_PATH,
            260,
            "void corvane2::_internal::signal_base_t::_insert(const "
            "corvane2::_internal::connection_t &)");
        return;
    }
    {
        threading::mutex_guard_t subscriber_guard(c.subscriber->subscriber_mutex);
        c.subscriber->signals.push_back(this);
    }
    connections.push_back(c);
}

void signal_base_t::_erase(const connection_t& c) {
    threading::mutex_guard_t guard(*signal_mutex);
    const auto found = find(c);
    if (found == connections.end()) {
        corvane2::assertion_failed(
            "(\"signal_t::disconnect: attempt to disconnect unknown connection\", "
            "subscriber_found)",
            ASSERTION_PATH, 275,
            "void corvane2::_internal::signal_base_t::_erase(const "
            "corvane2::_internal::connection_t &)");
        return;
    }
    if (call_state == nullptr) {
        connections.erase(found);
    } else {
        *found = connection_t();
    }
    // Deliberate: all entries of this signal go, also where other connections to the same
    // subscriber remain; the list is only there for the subscriber's own death.
    if (c.subscriber != nullptr) {
        forget_in(c.subscriber);
    }
}

void signal_base_t::_erase_all() {
    threading::mutex_guard_t guard(*signal_mutex);
    for (connection_t& entry : connections) {
        if (entry.subscriber != nullptr) {
            forget_in(entry.subscriber);
            if (call_state != nullptr) {
                entry = connection_t();
            }
        }
    }
    if (call_state == nullptr) {
        connections.clear();
    }
}

void signal_base_t::on_subscriber_destroy(subscriber_base_t* s) {
    threading::mutex_guard_t guard(*signal_mutex);
    for (auto entry = connections.begin(); entry != connections.end();) {
        if (entry->subscriber != s) {
            ++entry;
        } else if (call_state == nullptr) {
            entry = connections.erase(entry);
        } else {
            *entry = connection_t();
            ++entry;
        }
    }
}

void signal_base_t::pre_call(onstack_signal_state_t& state) const {
    state.mutex = signal_mutex;
    state.mutex->acquire();
    state.is_nested = call_state != nullptr;
    if (!state.is_nested) {
        state.alive_flag = true;
        call_state = &state.alive_flag;
    }
    state.counting_flag = call_state;
}

bool signal_base_t::check_valid_state_after_call(onstack_signal_state_t& state) {
    if (*state.counting_flag) {
        return true;
    }
    state.mutex->release();
    if (!state.is_nested && state.mutex != nullptr) {
        delete state.mutex;
        state.mutex = nullptr;
    }
    return false;
}

void signal_base_t::post_call(onstack_signal_state_t& state) const {
    if (*state.counting_flag && !state.is_nested) {
        call_state = nullptr;
        _sweep(connections);
    }
    state.mutex->release();
}

} // namespace corvane2::_internal
