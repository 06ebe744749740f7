#pragma once

#include "core/support/Subscription.hpp"

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace quillet {

// A list of subscribers called synchronously, in the order they subscribed, each time the owner
// emits. Subscribers may subscribe, unsubscribe (themselves or others) and emit again from inside
// a call; a subscriber added during an emission is called for that emission too. Tokens may
// outlive the signal: their subscribers live in a block that the tokens only watch.
template <class... Args> class Signal {
public:
    using Handler = std::function<void(const Args&...)>;

    Signal() = default;
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;

    Subscription subscribe(Handler handler) const {
        const std::uint64_t id = slots_->nextID++;
        slots_->entries.push_back({id, std::make_shared<Handler>(std::move(handler))});
        return Subscription([weakSlots = std::weak_ptr<Slots>(slots_), id] {
            if (auto slots = weakSlots.lock()) {
                slots->remove(id);
            }
        });
    }

    void emit(const Args&... args) const {
        // Held for the whole emission, so that subscribers may destroy what owns the signal.
        std::shared_ptr<Slots> slots = slots_;
        ++slots->emitting;
        for (std::size_t i = 0; i < slots->entries.size(); ++i) {
            // A copy: a subscriber that unsubscribes itself must not destroy the running call.
            std::shared_ptr<Handler> handler = slots->entries[i].handler;
            if (handler) {
                (*handler)(args...);
            }
        }
        if (--slots->emitting == 0) {
            slots->compact();
        }
    }

private:
    struct Slot {
        std::uint64_t id;
        std::shared_ptr<Handler> handler; // empty once unsubscribed during an emission
    };
    struct Slots {
        std::vector<Slot> entries;
        std::uint64_t nextID = 0;
        int emitting = 0;

        void remove(std::uint64_t id) {
            for (Slot& slot : entries) {
                if (slot.id == id) {
                    slot.handler.reset();
                }
            }
            if (emitting == 0) {
                compact();
            }
        }
        // Entries are only erased between emissions, so that a running loop's indices hold.
        void compact() {
            std::erase_if(entries, [](const Slot& slot) { return !slot.handler; });
        }
    };

    std::shared_ptr<Slots> slots_ = std::make_shared<Slots>();
};

// A value whose every assignment is announced before it is stored: a subscriber that reads the
// value while being told of a change still sees the old one. A new subscriber is given the
// current value at once, then every later one.
template <class T> class Observable {
public:
    using Observer = std::function<void(const T&)>;

    explicit Observable(T initial) : value_(std::move(initial)) {}
    Observable(const Observable&) = delete;
    Observable& operator=(const Observable&) = delete;

    const T& value() const { return value_; }

    Subscription subscribe(Observer observer) const {
        auto shared = std::make_shared<Observer>(std::move(observer));
        Subscription token = changes_.subscribe([shared](const T& value) { (*shared)(value); });
        // A copy, so that an observer that assigns during this first call reads a stable value.
        const T current = value_;
        (*shared)(current);
        return token;
    }

    // Only the changes from now on, without the current value.
    Subscription subscribeToChanges(Observer observer) const {
        return changes_.subscribe(std::move(observer));
    }

    // Announces `newValue` to every subscriber, then stores it. Announced even when equal.
    void set(T newValue) {
        changes_.emit(newValue);
        value_ = std::move(newValue);
    }

private:
    T value_;
    Signal<T> changes_;
};

} // namespace quillet
