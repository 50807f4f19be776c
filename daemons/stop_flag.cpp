#include "stop_flag.h"

#include <algorithm>
#include <cerrno>
#include <poll.h>
#include <sys/eventfd.h>
#include <system_error>
#include <unistd.h>

namespace daemons
{

StopFlag::StopFlag() : event_(eventfd(0, EFD_CLOEXEC))
{
    if (event_ < 0)
        throw std::system_error(errno, std::generic_category(), "eventfd");
}

StopFlag::~StopFlag()
{
    close(event_);
}

// NOLINTNEXTLINE(readability-make-member-function-const): other threads see it
void StopFlag::raise()
{
    eventfd_write(event_, 1);
}

bool StopFlag::wait_for(std::chrono::steady_clock::duration time) const
{
    using Clock = std::chrono::steady_clock;
    using std::chrono::milliseconds;
    const auto end = Clock::now() + time;
    for (;;) {
        const auto left = std::chrono::ceil<milliseconds>(end - Clock::now());
        const auto bounded = std::clamp(left, milliseconds(0), milliseconds(1'000'000));
        pollfd fd{event_, POLLIN, 0};
        if (poll(&fd, 1, static_cast<int>(bounded.count())) > 0)
            return true;
        if (Clock::now() >= end)
            return false;
    }
}

} // namespace daemons
