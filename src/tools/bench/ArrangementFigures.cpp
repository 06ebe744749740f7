// The arrangement at launch, measured: what it costs the user (drags, a hidden cursor) beside
// the least it could cost, and what it costs the machine.

#include "core/engine/ControlItemManager.hpp"
#include "tools/bench/BenchQuillet.hpp"
#include "tools/bench/Figures.hpp"

#include "sim/app/ZoneCheck.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <optional>

namespace quillet::bench {

namespace {

using Seconds = std::chrono::duration<double>;

constexpr std::array kDropModels{
    std::pair{sim::DropModel::slotAtRelease, "slotAtRelease"},
    std::pair{sim::DropModel::liveByPointer, "liveByPointer"},
    std::pair{sim::DropModel::liveByLeadingEdge, "liveByLeadingEdge"},
    std::pair{sim::DropModel::liveByWholeItem, "liveByWholeItem"},
    std::pair{sim::DropModel::nearestGapAtRelease, "nearestGapAtRelease"}};
constexpr std::array kBarSizes{5, 10, 20, 40};

struct Case {
    sim::DropModel model;
    int items;
    int misplaced;
};

struct Row {
    Case arrangement;
    // The misplaced items and the control items that must move to stand in order.
    int least = 0;
    // The fewest moves of any item that put every item in its zone (moving a border can take
    // the place of moving many items).
    int fewest = 0;
    sim::ScenarioPlayer::Outcome outcome;
    double cpuMilliseconds = 0;
    // Of which inside window-list reads (the simulated window server's share is in there).
    double readMilliseconds = 0;
    std::uint64_t listReads = 0;
    std::uint64_t descriptionReads = 0;
    // Drags of a second arrangement with the same rules, once the first is done.
    std::size_t dragsAgain = 0;
};

// None, one, half and all of the bar's items out of their zone.
std::array<int, 4> misplacements(int items) {
    return {0, 1, items / 2, items};
}

// Whether item `index` of `items` is one of `misplaced` spread evenly over the bar.
bool isMisplaced(int index, int items, int misplaced) {
    return (index + 1) * misplaced / items > index * misplaced / items;
}

// Where an item belongs, from left to right: always-hidden items, the always-separator, hidden
// items, the separator, then visible items and the toggle in any order. None for what nothing
// moves (immovable items, our own spacers).
std::optional<int> rank(const sim::MenuBarModel::Item& item, const SectionRules& rules) {
    if (!item.movable) {
        return std::nullopt;
    }
    if (item.kind == sim::MenuBarModel::Kind::own) {
        if (item.title == ControlItemManager::kAlwaysSeparatorName) {
            return 1;
        }
        if (item.title == ControlItemManager::kSeparatorName) {
            return 3;
        }
        return item.title == ControlItemManager::kToggleName ? std::optional(4) : std::nullopt;
    }
    switch (sim::ZoneCheck::zoneFor(item, rules, std::nullopt)) {
    case MenuBarSection::alwaysHidden:
        return 0;
    case MenuBarSection::hidden:
    case MenuBarSection::dynamic:
        return 2;
    case MenuBarSection::visible:
        return 4;
    }
    return 4;
}

// The fewest moves that put every item (or only our control items) where it belongs, each move
// taking one item anywhere: the items that can stay are the longest run, left to right, whose
// ranks never decrease.
int fewestMoves(const sim::SimulatedMac& mac, const SectionRules& rules, bool onlyControlItems) {
    std::vector<int> ranks;
    for (const WindowID window : mac.menuBarOrder()) {
        const auto& item = *mac.menuBar().item(window);
        const auto itemRank = rank(item, rules);
        if (itemRank && (!onlyControlItems || item.kind == sim::MenuBarModel::Kind::own)) {
            ranks.push_back(*itemRank);
        }
    }
    // Patience sorting: the smallest last rank of a non-decreasing run of each length.
    std::vector<int> tails;
    for (const int each : ranks) {
        const auto at = std::upper_bound(tails.begin(), tails.end(), each);
        if (at == tails.end()) {
            tails.push_back(each);
        } else {
            *at = each;
        }
    }
    return static_cast<int>(ranks.size() - tails.size());
}

// The user's rules: the misplaced items ruled hidden, every third of them always hidden; the
// others ruled visible or not at all. At first launch every item stands right of our control
// items, in view, so exactly the misplaced ones must move.
SectionRules rulesFor(const Case& arrangement) {
    SectionRules rules;
    int misplacedSoFar = 0;
    for (int i = 0; i < arrangement.items; ++i) {
        const std::string key = benchApplication(i).bundleID;
        if (isMisplaced(i, arrangement.items, arrangement.misplaced)) {
            rules[key] =
                ++misplacedSoFar % 3 == 0 ? MenuBarSection::alwaysHidden : MenuBarSection::hidden;
        } else if (i % 2 == 0) {
            rules[key] = MenuBarSection::visible;
        }
    }
    return rules;
}

Row arrange(const Case& arrangement) {
    BenchQuillet quillet;
    quillet.mac().setDropModel(arrangement.model);
    std::vector<sim::SimulatedMac::Application> apps;
    for (int i = 0; i < arrangement.items; ++i) {
        apps.push_back(benchApplication(i));
    }
    addRunning(quillet.mac(), apps);
    const SectionRules rules = rulesFor(arrangement);
    quillet.preferences().setSectionByBundleID(rules);
    quillet.preferences().setProfiles({{"Same", rules}});

    Row row;
    row.arrangement = arrangement;
    quillet.launch();
    row.least = arrangement.misplaced + fewestMoves(quillet.mac(), rules, true);
    row.fewest = fewestMoves(quillet.mac(), rules, false);
    const auto start = threadCPUTime();
    quillet.settle();
    row.cpuMilliseconds =
        std::chrono::duration<double, std::milli>(threadCPUTime() - start).count();
    row.outcome = quillet.outcome();
    row.readMilliseconds =
        std::chrono::duration<double, std::milli>(quillet.windows.timeInReads).count();
    row.listReads = quillet.windows.listReads;
    row.descriptionReads = quillet.windows.descriptionReads;
    // The same rules once more, as a profile switch arranges them, on a bar now in order.
    quillet.preferences().switchProfile("Same");
    quillet.settle();
    row.dragsAgain = quillet.outcome().dragsPosted - row.outcome.dragsPosted;
    return row;
}

// The same arrangement `repetitions` times: the counts never differ, the CPU time is the
// median.
Row measure(const Case& arrangement, int repetitions) {
    std::vector<Row> rows;
    for (int i = 0; i < repetitions; ++i) {
        rows.push_back(arrange(arrangement));
    }
    std::sort(rows.begin(), rows.end(),
              [](const Row& a, const Row& b) { return a.cpuMilliseconds < b.cpuMilliseconds; });
    return rows[rows.size() / 2];
}

double median(std::vector<double> values) {
    if (values.empty()) {
        return 0;
    }
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

// What one move costs the user when its first attempt lands: the cursor-hidden time of the
// cheapest such arrangement, per move.
std::optional<double> firstAttemptCost(const std::vector<Row>& rows) {
    std::optional<double> cost;
    for (const Row& row : rows) {
        if (row.outcome.moves > 0 &&
            row.outcome.dragsPosted == static_cast<std::size_t>(row.outcome.moves)) {
            const double perMove = Seconds(row.outcome.cursorHidden).count() / row.outcome.moves;
            cost = std::min(cost.value_or(perMove), perMove);
        }
    }
    return cost;
}

void printRows(const std::vector<Row>& rows, const char* modelName) {
    std::printf("\n%s\n", modelName);
    std::printf(
        "  items misplaced fewest least drags moves ratio  hidden s  per item s  CPU ms  in reads  "
        "list reads  window reads  again  zones\n");
    for (const Row& row : rows) {
        const auto& outcome = row.outcome;
        const double hidden = Seconds(outcome.cursorHidden).count();
        std::printf(
            "  %5d %9d %6d %5d %5zu %5d %5s %9.2f %11s %7.3f %9.3f %11llu %13llu %6zu  %s\n",
            row.arrangement.items, row.arrangement.misplaced, row.fewest, row.least,
            outcome.dragsPosted, outcome.moves,
            row.least > 0 ? std::to_string(static_cast<double>(outcome.dragsPosted) / row.least)
                                .substr(0, 4)
                                .c_str()
                          : "-",
            hidden,
            row.arrangement.misplaced > 0
                ? std::to_string(hidden / row.arrangement.misplaced).substr(0, 5).c_str()
                : "-",
            row.cpuMilliseconds, row.readMilliseconds,
            static_cast<unsigned long long>(row.listReads),
            static_cast<unsigned long long>(row.descriptionReads), row.dragsAgain,
            outcome.zoneProblems.empty() ? "ok" : outcome.zoneProblems.front().c_str());
    }
}

// How CPU time grows with the bar, as the exponent k of items^k between the smallest and the
// largest bar, per share of misplaced items.
void printGrowth(const std::vector<Row>& rows) {
    const std::array<const char*, 4> shares{"none", "one", "half", "all"};
    std::printf("\nCPU growth with the bar (exponent k of items^k from %d to %d items, median "
                "over the drop models):",
                kBarSizes.front(), kBarSizes.back());
    for (std::size_t share = 0; share < shares.size(); ++share) {
        std::vector<double> exponents;
        for (const auto& [model, name] : kDropModels) {
            double smallest = 0;
            double largest = 0;
            for (const Row& row : rows) {
                if (row.arrangement.model != model ||
                    row.arrangement.misplaced != misplacements(row.arrangement.items)[share]) {
                    continue;
                }
                smallest =
                    row.arrangement.items == kBarSizes.front() ? row.cpuMilliseconds : smallest;
                largest = row.arrangement.items == kBarSizes.back() ? row.cpuMilliseconds : largest;
            }
            if (smallest > 0 && largest > 0) {
                exponents.push_back(std::log(largest / smallest) /
                                    std::log(double(kBarSizes.back()) / kBarSizes.front()));
            }
        }
        std::printf(" %s misplaced %.2f;", shares[share], median(exponents));
    }
    std::printf("\n");
}

void printSummary(const std::vector<Row>& rows) {
    std::vector<double> ratios;
    std::size_t dragsWhenInPlace = 0;
    std::size_t dragsWhenNoneMisplaced = 0;
    double slowest40 = 0;
    double slowest40InReads = 0;
    std::size_t outOfZone = 0;
    std::size_t pending = 0;
    for (const Row& row : rows) {
        if (row.least > 0) {
            ratios.push_back(static_cast<double>(row.outcome.dragsPosted) / row.least);
        }
        if (row.arrangement.misplaced == 0) {
            dragsWhenNoneMisplaced += row.outcome.dragsPosted;
        }
        dragsWhenInPlace += row.dragsAgain;
        if (row.arrangement.items == kBarSizes.back()) {
            if (row.cpuMilliseconds > slowest40) {
                slowest40 = row.cpuMilliseconds;
                slowest40InReads = row.readMilliseconds;
            }
        }
        outOfZone += row.outcome.zoneProblems.size();
        pending += row.outcome.pendingOnceIdle;
    }
    std::printf("\nSummary of %zu arrangements\n", rows.size());
    std::printf("  drags of a second arrangement, every item in place: %zu in all (aim 0)\n",
                dragsWhenInPlace);
    std::printf("  drags at launch with no item misplaced (our control items still to order): "
                "%zu in all\n",
                dragsWhenNoneMisplaced);
    std::printf("  drags / least possible: median %.2f, worst %.2f (aim: median <= 1.10)\n",
                median(ratios),
                ratios.empty() ? 0 : *std::max_element(ratios.begin(), ratios.end()));
    const auto cost = firstAttemptCost(rows);
    std::vector<double> waste;
    for (const Row& row : rows) {
        if (cost && row.least > 0) {
            waste.push_back(Seconds(row.outcome.cursorHidden).count() / (*cost * row.least) - 1);
        }
    }
    std::printf("  cursor hidden per move whose first attempt lands: %.3f s; hidden time beyond "
                "that cost times the least moves: median %.0f%%, worst %.0f%% (aim 0%%)\n",
                cost.value_or(0), 100 * median(waste),
                waste.empty() ? 0 : 100 * *std::max_element(waste.begin(), waste.end()));
    std::printf("  CPU per arrangement of %d items, slowest: %.3f ms, %.3f ms of it inside "
                "window-list reads (aim < 1 ms)\n",
                kBarSizes.back(), slowest40, slowest40InReads);
    std::printf("  items out of their zone once idle: %zu; timers pending once idle: %zu\n",
                outOfZone, pending);
    printGrowth(rows);
}

} // namespace

void printArrangementFigures(const FigureOptions& options) {
    std::printf("== Arrangement at launch: drags (one per attempt), moves (the mover's calls), "
                "the least possible (items that must move: misplaced items and control items out "
                "of order), cursor "
                "hidden (virtual), CPU (this thread, core and simulator), window-list reads\n");
    const int repetitions = options.brief ? 1 : 5;
    std::vector<Row> all;
    for (const auto& [model, name] : kDropModels) {
        std::vector<Row> rows;
        for (const int items : kBarSizes) {
            for (const int misplaced : misplacements(items)) {
                rows.push_back(measure({model, items, misplaced}, repetitions));
            }
        }
        printRows(rows, name);
        all.insert(all.end(), rows.begin(), rows.end());
    }
    printSummary(all);
}

} // namespace quillet::bench
