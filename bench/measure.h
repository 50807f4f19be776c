// Measures in blocks that take turns, so that what disturbs the machine disturbs all of them alike.
#ifndef BENCH_MEASURE_H
#define BENCH_MEASURE_H

#include <functional>
#include <string>
#include <vector>

namespace bench
{

struct Pace {
    int rounds;
    double block; // nanoseconds that a block takes at least
    Pace scaled(int factor) const { return {rounds / factor + 1, block * factor}; }
};
// Blocks are much shorter than a time slice, so that few are interrupted.
extern Pace pace;

// Makes `calls` calls; the nanoseconds that they took.
using Block = std::function<double(int calls)>;
// Each call of `work` counts as `times` calls.
Block block_of(std::function<void()> work, int times = 1);

using Samples = std::vector<double>;

// Nanoseconds per call of each, one sample a round. Every other round takes them in reverse order.
std::vector<Samples> in_turns(const std::vector<Block> &blocks, const Pace &at = pace);

struct Spread { // the median and the quartiles
    double low, median, high;
};
Spread spread(Samples samples);
Spread exactly(double value);
Samples ratios(const Samples &of, const Samples &to);

// Prints a line for bench/report: which table, row, column and point; the value; and the bar that
// its median is held to, such as "<=1.03". Standard output is the library's, so it goes elsewhere.
struct Place {
    std::string table, row, column, x = {};
};
void print_figures_to_stdout();
void figure(const Place &place, const char *unit, const Spread &value, const char *bar = "");

} // namespace bench

#endif
