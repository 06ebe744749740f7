#pragma once

#include <functional>
#include <utility>

namespace quillet {

// Keeps one subscriber attached to a signal or an observable property; the subscription ends
// when the token is destroyed or cancelled. Move-only, so that ownership of a subscription is
// always plain to see (a subsystem keeps its tokens in members or in a set of tokens).
class Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::function<void()> cancel) : cancel_(std::move(cancel)) {}
    Subscription(Subscription&& other) noexcept : cancel_(std::exchange(other.cancel_, {})) {}
    Subscription& operator=(Subscription&& other) noexcept {
        if (this != &other) {
            cancel();
            cancel_ = std::exchange(other.cancel_, {});
        }
        return *this;
    }
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    ~Subscription() { cancel(); }

    // Detaches the subscriber; does nothing the second time or when the source is gone.
    void cancel() {
        if (auto cancel = std::exchange(cancel_, {})) {
            cancel();
        }
    }

private:
    std::function<void()> cancel_;
};

} // namespace quillet
