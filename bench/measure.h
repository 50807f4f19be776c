// The same work done twice, by the library and by hand, in turns and on one core.
#ifndef BENCH_MEASURE_H
#define BENCH_MEASURE_H

#include <cstdio>
#include <functional>

namespace bench
{

using Work = std::function<void()>;

extern std::FILE *figures; // where they are printed: standard output is the library's

// Keeps this process, and those it forks from now on, on one core.
void stay_on_one_core();

// Nanoseconds a call: `theirs` and `ours` take turns, many rounds of many calls; the best round of
// each counts, since a busy machine only ever adds. Prints both and their ratio, which the bar
// bounds. True when it holds.
bool compare(const char *what, int calls, double bar, const Work &theirs, const Work &ours);

// The system calls that a child makes in one call of `work`, counted by its tracer.
int system_calls(const Work &work);

// Prints a count beside its bar. True when they are equal.
bool expect_count(const char *what, int count, int bar);

// Runs `serve` in a child until the end of this object.
class Daemon
{
public:
    explicit Daemon(const Work &serve);
    ~Daemon();
    Daemon(const Daemon &) = delete;
    Daemon &operator=(const Daemon &) = delete;

private:
    int child_;
};

bool getters();
bool at_request();
bool qmi_exchange();

} // namespace bench

#endif
