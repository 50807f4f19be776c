#include "measure.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>
#include <utility>

namespace bench
{
namespace
{

std::FILE *figures = nullptr;

// The quickest of a few counts: an interruption must not make blocks short.
int calls_of_a_block(const Block &block, double nanoseconds)
{
    int calls = 1;
    while (std::min({block(calls), block(calls), block(calls)}) < nanoseconds)
        calls *= 2;
    return calls;
}

} // namespace

Pace pace{2001, 2e5};

Block block_of(std::function<void()> work, int times)
{
    return [work = std::move(work), times](int calls) {
        const auto start = std::chrono::steady_clock::now();
        int done = 0;
        for (; done < calls; done += times)
            work();
        const std::chrono::duration<double, std::nano> spent =
            std::chrono::steady_clock::now() - start;
        return spent.count() * calls / done;
    };
}

std::vector<Samples> in_turns(const std::vector<Block> &blocks, const Pace &at)
{
    std::vector<Samples> all(blocks.size());
    std::vector<int> calls;
    for (const Block &block : blocks)
        calls.push_back(calls_of_a_block(block, at.block));
    for (int round = 0; round < at.rounds; ++round) {
        for (std::size_t turn = 0; turn < blocks.size(); ++turn) {
            const std::size_t i = round % 2 == 0 ? turn : blocks.size() - 1 - turn;
            all[i].push_back(blocks[i](calls[i]) / calls[i]);
        }
    }
    return all;
}

Spread spread(Samples samples)
{
    std::sort(samples.begin(), samples.end());
    const auto at = [&](std::size_t quarter) {
        return samples[(samples.size() - 1) * quarter / 4];
    };
    return {at(1), at(2), at(3)};
}

Spread exactly(double value)
{
    return {value, value, value};
}

Samples ratios(const Samples &of, const Samples &to)
{
    Samples all;
    for (std::size_t i = 0; i < of.size(); ++i)
        all.push_back(of[i] / to[i]);
    return all;
}

void print_figures_to_stdout()
{
    figures = fdopen(dup(STDOUT_FILENO), "w");
    if (figures == nullptr || std::freopen("/dev/null", "w", stdout) == nullptr) {
        std::perror("cmif-bench: standard output");
        std::exit(1);
    }
}

void figure(const Place &place, const char *unit, const Spread &value, const char *bar)
{
    std::fprintf(figures, "%s\t%s\t%s\t%s\t%s\t%.4f\t%.4f\t%.4f\t%s\n", place.table.c_str(),
                 place.row.c_str(), place.column.c_str(), place.x.c_str(), unit, value.median,
                 value.low, value.high, bar);
    std::fflush(figures);
}

} // namespace bench
