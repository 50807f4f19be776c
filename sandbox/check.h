#ifndef SANDBOX_CHECK_H
#define SANDBOX_CHECK_H

#include <cerrno>
#include <cstdio>
#include <string>
#include <system_error>

namespace sim
{

/* A step that has to succeed: throws what errno says about it if it did not. */
inline void need(bool done, const std::string &step)
{
    if (!done)
        throw std::system_error(errno, std::generic_category(), step);
}

/* A line for the person who runs the sandbox. */
inline void say(const std::string &line)
{
    std::fprintf(stderr, "cmif-sandbox: %s\n", line.c_str());
}

} // namespace sim

#endif
