#include "trace.h"

#include "tarn_nvram_config.h"

#include <cstdio>
#include <cstdlib>

namespace cmif
{

int TraceSite::read(const char *key)
{
    const int level = std::atoi(tarnNvramConfig_get(key));
    level_.store(level, std::memory_order_relaxed);
    return level;
}

void AtSite::print(const char *format, ...)
{
    if (!on())
        return;
    std::va_list values;
    va_start(values, format);
    std::vprintf(format, values);
    va_end(values);
}

void QmiSite::print(const char *format, ...)
{
    std::va_list values;
    va_start(values, format);
    vprint(format, values);
    va_end(values);
}

void QmiSite::vprint(const char *format, std::va_list values)
{
    if (!on(qmi_switch))
        return;
    flockfile(stdout); // one line, whoever else prints
    std::printf("[CMIF-QMI] - ");
    std::vprintf(format, values);
    funlockfile(stdout);
}

} // namespace cmif
