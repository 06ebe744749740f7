// quillet-bench: Google Benchmark timings of listing the menu bar, or, with --figures, the
// figures of what a user feels: arrangement cost, idle and hot paths, and a day of use.
//
//   quillet-bench [Google Benchmark options]
//   quillet-bench --figures [--short]

#include "tools/bench/Figures.hpp"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <string_view>

int main(int argc, char** argv) {
    using namespace quillet::bench;
    bool figures = false;
    FigureOptions options;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        figures = figures || argument == "--figures";
        options.brief = options.brief || argument == "--short";
    }
    if (figures) {
        printArrangementFigures(options);
        printIdleAndHotPathFigures(options);
        printDayInTheLife(options);
        std::fflush(stdout);
        return 0;
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
