#include "time_stamp.h"

#include "cmif.h"

#include <cstdio>
#include <cstring>
#include <ctime>
#include <sys/time.h>

namespace cmif
{

TimeStamp::TimeStamp()
{
    timeval now{};
    gettimeofday(&now, nullptr);
    auto milliseconds = static_cast<int>((now.tv_usec + 500) / 1000);
    if (milliseconds == 1000) {
        ++now.tv_sec;
        milliseconds = 0;
    }
    std::tm local{};
    tzset(); // localtime_r need not do it: a changed time zone takes effect at once
    localtime_r(&now.tv_sec, &local);
    std::snprintf(text_, sizeof text_, "%02d-%02d_%02d:%02d:%02d:%03d", local.tm_mon + 1,
                  local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec, milliseconds);
}

} // namespace cmif

const char *get_time(void)
{
    static char text[sizeof(cmif::TimeStamp)];
    std::strcpy(text, cmif::TimeStamp().text());
    return text;
}
