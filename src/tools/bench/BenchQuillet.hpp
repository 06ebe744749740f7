#pragma once

#include "core/app/AppDelegate.hpp"
#include "core/app/Services.hpp"
#include "core/ports/Scheduler.hpp"
#include "core/ports/WindowListSource.hpp"
#include "core/prefs/AppPreferences.hpp"
#include "sim/app/ScenarioPlayer.hpp"
#include "sim/app/SimulatedQuillet.hpp"
#include "sim/app/SimulatedWorld.hpp"

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace quillet::bench {

// CPU time of this thread: the simulator's clock is virtual, so no sleep is in it.
std::chrono::nanoseconds threadCPUTime();

// The window list as the core reads it, counted: every read of the list or of one window's
// description costs the window server a round trip on a Mac. `timeInReads` is the CPU time spent
// inside them: the simulated window server's and the core's reading of each record together.
class CountingWindowList : public WindowListSource {
public:
    explicit CountingWindowList(const WindowListSource& windows) : windows_(windows) {}

    bool visitWindowList(const Visitor& visit) const override {
        ++listReads;
        const auto start = threadCPUTime();
        const bool read = windows_.visitWindowList(visit);
        timeInReads += threadCPUTime() - start;
        return read;
    }
    bool visitWindowDescription(WindowID window, const Visitor& visit) const override {
        ++descriptionReads;
        const auto start = threadCPUTime();
        const bool read = windows_.visitWindowDescription(window, visit);
        timeInReads += threadCPUTime() - start;
        return read;
    }
    std::uint64_t reads() const { return listReads + descriptionReads; }

    mutable std::uint64_t listReads = 0;
    mutable std::uint64_t descriptionReads = 0;
    mutable std::chrono::nanoseconds timeInReads{0};

private:
    const WindowListSource& windows_;
};

// The main thread as the core sees it, counting the turns its jobs take: one per job that runs.
// `afterTurn`, when set, is asked after every turn.
class CountingScheduler : public Scheduler {
public:
    explicit CountingScheduler(Scheduler& scheduler) : scheduler_(scheduler) {}

    Duration now() const override { return scheduler_.now(); }
    void post(std::function<void()> job) override { scheduler_.post(counted(std::move(job))); }
    void postAfter(Duration delay, std::function<void()> job) override {
        scheduler_.postAfter(delay, counted(std::move(job)));
    }
    void runInBackground(std::function<void()> work, std::function<void()> completion) override {
        scheduler_.runInBackground(std::move(work), counted(std::move(completion)));
    }
    bool isMainThread() const override { return scheduler_.isMainThread(); }

    std::uint64_t turns = 0;
    std::function<void()> afterTurn;

private:
    std::function<void()> counted(std::function<void()> job) {
        return [this, job = std::move(job)] {
            ++turns;
            job();
            if (afterTurn) {
                afterTurn();
            }
        };
    }

    Scheduler& scheduler_;
};

// Quillet on a simulated Mac, like sim::SimulatedQuillet, with the window list and the main
// thread it uses counted.
struct BenchQuillet {
    BenchQuillet();
    ~BenchQuillet() { world.scheduler.runUntilIdle(); }
    BenchQuillet(const BenchQuillet&) = delete;
    BenchQuillet& operator=(const BenchQuillet&) = delete;

    sim::SimulatedMac& mac() { return world.mac; }
    AppPreferences& preferences() { return services.preferences(); }
    void launch() { delegate.applicationDidFinishLaunching(); }
    // Lets virtual time pass until the layout work is done, then a minute more: timers left
    // then are pending once idle. Never waits forever, whatever a timer does.
    void settle();
    // The figures quillet-sim prints, for this run so far.
    sim::ScenarioPlayer::Outcome outcome() {
        return sim::ScenarioPlayer::outcome(world, preferences());
    }

    sim::SimulatedWorld world;
    CountingWindowList windows{world.mac};
    CountingScheduler mainThread{world.scheduler};
    Services services;
    AppDelegate delegate;

private:
    PlatformPorts ports();
};

// An application of the bench, numbered: its one item is titled by its bundle identifier, which
// rules name.
sim::SimulatedMac::Application benchApplication(int number);
// Puts the applications' items into the bar, the first rightmost, as if they were running.
void addRunning(sim::SimulatedMac& mac, const std::vector<sim::SimulatedMac::Application>& apps);

// Resident memory of this process in bytes (0 where /proc is not there).
std::uint64_t residentBytes();
// Bytes held now through operator new (HeapCounter.cpp).
std::uint64_t heapBytesInUse();
// Heap bytes the simulator holds for its record of every posted event, pause and warp, which
// grows with each drag by design: the part of the heap that is not Quillet's to keep bounded.
std::uint64_t recordedInputBytes(const sim::SimulatedInput& input);

} // namespace quillet::bench
