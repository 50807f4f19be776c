// Measures the library against the same work written by hand, in turns and on one core.
#ifndef BENCH_MEASURE_H
#define BENCH_MEASURE_H

#include <cstdio>
#include <functional>

namespace bench
{

using Work = std::function<void()>;

extern std::FILE *figures; // not standard output, which the library prints to

// Keeps this process, and those it forks from now on, on one core.
void stay_on_one_core();

// Nanoseconds per call: both take turns for many rounds of `calls` calls, and the best round of
// each counts, since a busy machine can only add time. Prints both, their ratio and its bar; true
// when the ratio is at most that.
bool compare(const char *what, int calls, double bar, const Work &by_hand, const Work &by_library);

// The system calls that `work` makes from its second call on, counted by tracing a child.
int system_calls(const Work &work);

// Prints a count and the number it must be; true when they are equal.
bool expect_count(const char *what, int count, int bar);

// Runs `serve` in a child while this object lives.
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
