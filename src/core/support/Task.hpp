#pragma once

#include "core/ports/Scheduler.hpp"

#include <cassert>
#include <coroutine>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace quillet {

namespace detail {

// What a spawned task and every coroutine it awaits share: whether it was cancelled, whether it
// has finished, who waits for it, and ownership of its outermost coroutine frame.
struct TaskState {
    Scheduler* scheduler = nullptr;
    bool cancelled = false;
    bool done = false;
    std::coroutine_handle<> root;
    // Tasks waiting for this one, each with its own state so that it stays alive meanwhile.
    std::vector<std::pair<std::coroutine_handle<>, std::shared_ptr<TaskState>>> waiters;

    ~TaskState() {
        // A task still suspended when the last reference goes (its timer was dropped with the
        // scheduler) is destroyed rather than leaked.
        if (root) {
            root.destroy();
        }
    }
};

struct PromiseBase {
    std::weak_ptr<TaskState> state;
    std::coroutine_handle<> continuation;

    std::suspend_always initial_suspend() noexcept { return {}; }
    void unhandled_exception() noexcept { std::terminate(); }

    struct FinalAwaiter {
        bool await_ready() noexcept { return false; }
        template <typename Promise>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> self) noexcept {
            if (auto next = self.promise().continuation) {
                return next; // an awaiting coroutine goes on; it owns this frame
            }
            finishRoot(self.promise().state.lock());
            return std::noop_coroutine();
        }
        void await_resume() noexcept {}
    };
    FinalAwaiter final_suspend() noexcept { return {}; }

    static void finishRoot(const std::shared_ptr<TaskState>& state);
};

inline void PromiseBase::finishRoot(const std::shared_ptr<TaskState>& state) {
    if (!state) {
        return;
    }
    state->done = true;
    std::exchange(state->root, {}).destroy();
    // Waiters resume on a later turn of the main loop, as after any await.
    for (auto& waiter : std::exchange(state->waiters, {})) {
        state->scheduler->post(
            [handle = waiter.first, keep = std::move(waiter.second)] { handle.resume(); });
    }
}

template <typename Promise>
std::shared_ptr<TaskState> stateOf(std::coroutine_handle<Promise> handle) {
    return handle.promise().state.lock();
}

template <typename T> struct Promise : PromiseBase {
    std::optional<T> value;
    void return_value(T result) { value = std::move(result); }
    T result() { return std::move(*value); }
};

template <> struct Promise<void> : PromiseBase {
    void return_void() noexcept {}
    void result() noexcept {}
};

} // namespace detail

// A coroutine that runs on the main thread. It starts when it is awaited by another task or when
// it is handed to `TaskHandle::spawn`; awaiting it yields its result.
template <typename T = void> class [[nodiscard]] Task {
public:
    struct promise_type : detail::Promise<T> {
        Task get_return_object() {
            return Task(std::coroutine_handle<promise_type>::from_promise(*this));
        }
    };

    Task(Task&& other) noexcept : handle_(std::exchange(other.handle_, {})) {}
    Task& operator=(Task&&) = delete;
    ~Task() {
        if (handle_) {
            handle_.destroy();
        }
    }

    bool await_ready() const noexcept { return false; }
    template <typename Parent>
    std::coroutine_handle<> await_suspend(std::coroutine_handle<Parent> parent) noexcept {
        handle_.promise().state = parent.promise().state;
        handle_.promise().continuation = parent;
        return handle_;
    }
    T await_resume() { return handle_.promise().result(); }

private:
    friend class TaskHandle;
    explicit Task(std::coroutine_handle<promise_type> handle) : handle_(handle) {}
    std::coroutine_handle<promise_type> release() { return std::exchange(handle_, {}); }

    std::coroutine_handle<promise_type> handle_;
};

// A running task, started by `spawn`: it can be cancelled (its sleeps then report so) and
// awaited by another task. Dropping the handle does not stop the task.
class TaskHandle {
public:
    TaskHandle() = default;

    // Starts `task` on the next turn of the main loop.
    static TaskHandle spawn(Scheduler& scheduler, Task<void> task) {
        auto state = std::make_shared<detail::TaskState>();
        auto handle = task.release();
        handle.promise().state = state;
        state->scheduler = &scheduler;
        state->root = handle;
        scheduler.post([handle, state] { handle.resume(); });
        return TaskHandle(std::move(state));
    }

    explicit operator bool() const { return state_ != nullptr; }
    bool isDone() const { return state_ && state_->done; }
    bool isCancelled() const { return state_ && state_->cancelled; }
    void cancel() {
        if (state_) {
            state_->cancelled = true;
        }
    }

    // Awaiting a handle waits until its task has finished.
    bool await_ready() const noexcept { return !state_ || state_->done; }
    template <typename Promise> void await_suspend(std::coroutine_handle<Promise> waiter) {
        state_->waiters.emplace_back(waiter, detail::stateOf(waiter));
    }
    void await_resume() const noexcept {}

private:
    explicit TaskHandle(std::shared_ptr<detail::TaskState> state) : state_(std::move(state)) {}
    std::shared_ptr<detail::TaskState> state_;
};

// `co_await sleep(scheduler, d)` suspends for `d` on the monotonic clock and yields false when the
// task was cancelled meanwhile (the caller then stops). Bind the answer to a local before testing
// it: GCC 12 silently drops the rest of some coroutines that await inside an `if` condition.
class SleepAwaiter {
public:
    SleepAwaiter(Scheduler& scheduler, Duration delay) : scheduler_(scheduler), delay_(delay) {}
    bool await_ready() const noexcept { return false; }
    template <typename Promise> void await_suspend(std::coroutine_handle<Promise> self) {
        auto state = detail::stateOf(self);
        state_ = state;
        scheduler_.postAfter(delay_, [self, keep = std::move(state)] { self.resume(); });
    }
    bool await_resume() const noexcept {
        auto state = state_.lock();
        return !(state && state->cancelled);
    }

private:
    Scheduler& scheduler_;
    Duration delay_;
    // Weak: the awaiter lives in the task's own frame, which the state owns.
    std::weak_ptr<detail::TaskState> state_;
};

inline SleepAwaiter sleep(Scheduler& scheduler, Duration delay) {
    return {scheduler, delay};
}

// `co_await inBackground(scheduler, work)` runs `work` off the main thread and resumes on the
// main thread with its result.
template <typename T> class BackgroundAwaiter {
public:
    BackgroundAwaiter(Scheduler& scheduler, std::function<T()> work)
        : scheduler_(scheduler), work_(std::move(work)) {}
    bool await_ready() const noexcept { return false; }
    template <typename Promise> void await_suspend(std::coroutine_handle<Promise> self) {
        scheduler_.runInBackground([this] { result_ = work_(); },
                                   [self, keep = detail::stateOf(self)] { self.resume(); });
    }
    T await_resume() { return std::move(*result_); }

private:
    Scheduler& scheduler_;
    std::function<T()> work_;
    std::optional<T> result_;
};

template <typename T>
BackgroundAwaiter<T> inBackground(Scheduler& scheduler, std::function<T()> work) {
    return {scheduler, std::move(work)};
}

} // namespace quillet
