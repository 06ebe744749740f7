#include "core/support/Observable.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace quillet {
namespace {

// That an Observable announces a change before storing it, and gives a new subscriber the
// current value, runs end to end in the settings operations and the application's wiring.
TEST(Observable, DestroyingOrReplacingATokenEndsItsSubscription) {
    Observable<int> count(0);
    int calls = 0;
    {
        Subscription token = count.subscribe([&](const int&) { ++calls; });
        Subscription moved = std::move(token);
        count.set(1);
        EXPECT_EQ(calls, 2);
        moved = count.subscribe([&](const int&) { calls += 100; }); // ends the first one
        count.set(2);
        EXPECT_EQ(calls, 202);
    }
    count.set(3);
    EXPECT_EQ(calls, 202);
}

TEST(Signal, SubscribersMayUnsubscribeThemselvesAndOthersDuringAnEmission) {
    Signal<int> signal;
    std::vector<std::string> calls;
    Subscription first;
    Subscription second;
    Subscription third;
    first = signal.subscribe([&](const int&) {
        calls.push_back("first");
        first.cancel(); // ends the subscription whose handler is running
        third.cancel();
    });
    second = signal.subscribe([&](const int&) { calls.push_back("second"); });
    third = signal.subscribe([&](const int&) { calls.push_back("third"); });

    signal.emit(1);
    EXPECT_EQ(calls, (std::vector<std::string>{"first", "second"}));
    signal.emit(2);
    EXPECT_EQ(calls, (std::vector<std::string>{"first", "second", "second"}));
}

TEST(Signal, NestedEmissionsAndLateSubscribersAreHandled) {
    Signal<int> signal;
    std::vector<int> heard;
    Subscription late;
    Subscription outer = signal.subscribe([&](const int& value) {
        heard.push_back(value);
        if (value == 1) {
            late = signal.subscribe([&](const int& v) { heard.push_back(100 + v); });
            signal.emit(2); // heard by everyone, the new subscriber included
        }
    });
    Subscription quitter;
    quitter = signal.subscribe([&](const int& value) {
        heard.push_back(10 + value);
        quitter.cancel(); // cancelled inside the nested emission
    });

    signal.emit(1);
    // outer(1) -> nested: outer(2), quitter(2) cancels, late(2); back in the first emission
    // the quitter is gone and the late subscriber hears 1 as well.
    EXPECT_EQ(heard, (std::vector<int>{1, 2, 12, 102, 101}));
    heard.clear();
    signal.emit(3);
    EXPECT_EQ(heard, (std::vector<int>{3, 103}));
}

TEST(Signal, AnEmissionFromInsideOneReachesEveryoneAfterAnEarlierSubscriberLeft) {
    Signal<int> signal;
    std::vector<std::string> calls;
    Subscription leaver;
    leaver = signal.subscribe([&](const int& value) {
        calls.push_back("leaver " + std::to_string(value));
        leaver.cancel();
    });
    Subscription echo = signal.subscribe([&](const int& value) {
        calls.push_back("echo " + std::to_string(value));
        if (value == 1) {
            signal.emit(2);
        }
    });
    Subscription listener = signal.subscribe(
        [&](const int& value) { calls.push_back("listener " + std::to_string(value)); });

    signal.emit(1);
    EXPECT_EQ(calls, (std::vector<std::string>{"leaver 1", "echo 1", "echo 2", "listener 2",
                                               "listener 1"}));
    calls.clear();
    signal.emit(3);
    EXPECT_EQ(calls, (std::vector<std::string>{"echo 3", "listener 3"}));
}

TEST(Signal, TokensMayOutliveTheirSourceWithoutTouchingAnother) {
    auto signal = std::make_unique<Signal<>>();
    Subscription token = signal->subscribe([] {});
    signal.reset();

    // A new signal may reuse the memory and the subscriber numbering of the old one.
    auto replacement = std::make_unique<Signal<>>();
    int calls = 0;
    Subscription current = replacement->subscribe([&] { ++calls; });
    token.cancel();
    replacement->emit();
    EXPECT_EQ(calls, 1);
}

TEST(Signal, ASubscriberMayDestroyTheSignalItIsCalledFrom) {
    auto signal = std::make_unique<Signal<>>();
    int laterCalls = 0;
    Subscription destroyer = signal->subscribe([&] { signal.reset(); });
    Subscription later = signal->subscribe([&] { ++laterCalls; });
    signal->emit();
    EXPECT_EQ(signal, nullptr);
    EXPECT_EQ(laterCalls, 1);
}

} // namespace
} // namespace quillet
