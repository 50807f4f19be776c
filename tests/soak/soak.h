// What the programs that count calls share: their processes and their figures.
#ifndef TESTS_SOAK_SOAK_H
#define TESTS_SOAK_SOAK_H

#include <functional>
#include <new>
#include <sys/mman.h>
#include <sys/types.h>

namespace soak
{

// Runs in a process of its own, which ends with 0 when `body` returns.
pid_t start(const std::function<void()> &body);
void wait_for(pid_t process);
void end(pid_t process);
void pause_ms(int milliseconds);

// For counters that several processes share; lives as long as the program.
template <class T>
T &shared()
{
    void *memory =
        mmap(nullptr, sizeof(T), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    return *new (memory) T{};
}

// Prints a figure and its bar.
void at_most(int bar, const char *what, int value);
void at_least(int bar, const char *what, int value);
// The exit status: 1 when any figure has missed its bar.
int status();

} // namespace soak

#endif
