// How the sandbox reports errors.
#ifndef SANDBOX_CHECK_H
#define SANDBOX_CHECK_H

#include <cerrno>
#include <cstdio>
#include <string>
#include <system_error>

namespace sandbox
{

// Throws std::system_error with errno unless `done`.
inline void check_errno(bool done, const std::string &step)
{
    if (!done)
        throw std::system_error(errno, std::generic_category(), step);
}

// Prints a line for the user of cmif-sim.
inline void log_line(const std::string &line)
{
    std::fprintf(stderr, "cmif-sim: %s\n", line.c_str());
}

} // namespace sandbox

#endif
