#pragma once

// The figures of what a user feels, printed as plain tables by `quillet-bench --figures`. Most
// are counts on the virtual clock; the CPU times are this machine's.

namespace quillet::bench {

struct FigureOptions {
    // Fewer repetitions and a shorter day, for CI: the figures must come out, not be precise.
    bool brief = false;
};

// Drags, cursor-hidden time, CPU time and window-list reads of the arrangement at launch, over
// bars of growing size and disorder, under every way the menu bar may drop a dragged item.
void printArrangementFigures(const FigureOptions& options);
// Idle timers and reads, the cost of a pointer move, and the turns a hot key reveal takes.
void printIdleAndHotPathFigures(const FigureOptions& options);
// A virtual day of launches, quits, hot keys, hovers and profile switches on a busy Mac:
// resident memory each hour, and the zones at the end.
void printDayInTheLife(const FigureOptions& options);

} // namespace quillet::bench
