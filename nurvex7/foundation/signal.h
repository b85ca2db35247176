#pragma once

#include "nurvex7/export.h"
#include "nurvex7/platform/corvane2/mutex.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <list>

namespace corvane2::_internal {

class signal_base_t;
class subscriber_base_t;

/// Stands for "none" where a signal template names a receiver.
struct dummy_t {};

/// A member function pointer with its type taken off.
struct typeless_connection_t {
    std::array<std::byte, 16> bytes{};
};

/// A signal's knowledge of one receiver. An entry whose subscriber is null is dead: the call that
/// is running sweeps it when it ends.
struct connection_t {
    void* target_object = nullptr;
    subscriber_base_t* subscriber = nullptr;
    typeless_connection_t function;
    void (*caster_function)() = nullptr;
};

/// Two connections are the same where receiver and member function are; nothing else counts.
NURVEX7_API bool same_connection(const connection_t& a, const connection_t& b);

/// Base of whatever can receive a signal. Its connections are undone when it dies.
class NURVEX7_API subscriber_base_t {
public:
    subscriber_base_t();
    /// A copy is a receiver of its own: connections are not copied.
    subscriber_base_t(const subscriber_base_t&);
    subscriber_base_t& operator=(const subscriber_base_t&) { return *this; }
    virtual ~subscriber_base_t();

private:
    friend class signal_base_t;

    std::list<signal_base_t*> signals; ///< one entry for each connection into this subscriber
    mutable threading::mutex_t subscriber_mutex;
};

/// What a call keeps on its stack: it has to survive the signal.
struct onstack_signal_state_t {
    threading::mutex_t* mutex = nullptr;
    bool alive_flag = true;
    bool* counting_flag = nullptr; ///< its own flag, or that of the outermost call
    bool is_nested = false;
};

/// What all signals share. A signal is itself a subscriber, so that it can pass another on.
///
/// Deliberate: a signal locks itself before a subscriber, a dying subscriber locks itself before
/// its signals.
class NURVEX7_API signal_base_t : public subscriber_base_t {
public:
    signal_base_t();
    signal_base_t(const signal_base_t&) = delete;
    signal_base_t& operator=(const signal_base_t&) = delete;
    ~signal_base_t() override;

    /// Adds a connection; a second one of the same receiver and member is an assertion.
    void _insert(const connection_t& c);
    /// Takes a connection out; an unknown one is an assertion.
    void _erase(const connection_t& c);
    void _erase_all();
    void on_subscriber_destroy(subscriber_base_t* s);

protected:
    void pre_call(onstack_signal_state_t& state) const;
    void post_call(onstack_signal_state_t& state) const;
    /// True while the signal lives. Otherwise gives the lock back, and the outermost call deletes
    /// it. Touches nothing of the signal.
    static bool check_valid_state_after_call(onstack_signal_state_t& state);

    mutable std::list<connection_t> connections;
    mutable bool* call_state = nullptr; ///< alive flag of the outermost running call
    threading::mutex_t* signal_mutex;   ///< on the heap: a running call can outlive the signal

private:
    std::list<connection_t>::iterator find(const connection_t& c);
    void forget_in(subscriber_base_t* s);
};

/// For a receiver class R and a member function type F: the way back to the type.
template <typename R, typename F, typename... A>
class signal_templ {
public:
    static void caster(void* object, typeless_connection_t f, A... arguments) {
        F member{};
        std::memcpy(static_cast<void*>(&member), f.bytes.data(), sizeof(member));
        (static_cast<R*>(object)->*member)(arguments...);
    }
};

/// The call of a signal with the arguments A.
template <typename... A>
class signal_templ<dummy_t, dummy_t, A...> : public signal_base_t {
    static_assert(sizeof...(A) <= 6, "a signal takes at most six arguments");

public:
    using caster_t = void (*)(void*, typeless_connection_t, A...);

    /// Calls the receivers in order of connection, under the signal's lock. Receivers may connect
    /// (and are reached in this same call), disconnect, call again, or destroy the signal, after
    /// which no further receiver is called.
    void operator()(A... arguments) const {
        onstack_signal_state_t state;
        pre_call(state);
        try {
            if (*state.counting_flag && !call_all(state, arguments...)) {
                check_valid_state_after_call(state);
                return;
            }
        } catch (...) {
            if (check_valid_state_after_call(state)) {
                post_call(state);
            }
            throw;
        }
        post_call(state);
    }

private:
    /// False once a receiver has destroyed the signal: then nothing of it may be touched.
    bool call_all(onstack_signal_state_t& state, A&... arguments) const {
        for (auto entry = connections.begin(); entry != connections.end(); ++entry) {
            if (entry->subscriber != nullptr) {
                const auto caster = reinterpret_cast<caster_t>(entry->caster_function);
                caster(entry->target_object, entry->function, arguments...);
                if (!*state.counting_flag) {
                    return false;
                }
            }
        }
        return true;
    }
};

/// The signal that users declare.
template <typename... A>
class signal_t : public signal_templ<dummy_t, dummy_t, A...> {
public:
    /// Connects a member function of a receiver that derives from subscriber_base_t.
    template <typename T, typename R>
    void connect(T* receiver, void (R::*member)(A...)) {
        this->_insert(make<R>(receiver, member));
    }
    template <typename T, typename R>
    void connect(T* receiver, void (R::*member)(A...) const) {
        this->_insert(make<R>(receiver, member));
    }
    /// Undoes one connection.
    ///
    /// Deliberate: the receiver forgets this signal altogether. Duty: who connected several members
    /// to it disconnects all of them before the receiver dies.
    template <typename T, typename R>
    void disconnect(T* receiver, void (R::*member)(A...)) {
        this->_erase(make<R>(receiver, member));
    }
    template <typename T, typename R>
    void disconnect(T* receiver, void (R::*member)(A...) const) {
        this->_erase(make<R>(receiver, member));
    }

    /// Connects another signal of the same arguments: it fires whenever this one does.
    void connect(signal_t* other) {
        connect(other, &signal_templ<dummy_t, dummy_t, A...>::operator());
    }
    void disconnect(signal_t* other) {
        disconnect(other, &signal_templ<dummy_t, dummy_t, A...>::operator());
    }

private:
    template <typename R, typename T, typename F>
    static connection_t make(T* receiver, F member) {
        static_assert(sizeof(member) <= sizeof(typeless_connection_t));
        R* const target = receiver;
        connection_t c;
        c.target_object = target;
        c.subscriber = receiver;
        std::memcpy(c.function.bytes.data(), static_cast<const void*>(&member), sizeof(member));
        c.caster_function = reinterpret_cast<void (*)()>(&signal_templ<R, F, A...>::caster);
        return c;
    }
};

} // namespace corvane2::_internal
