#include "trace.h"

#include "tarn_nvram_config.h"

#include <cstdio>
#include <cstdlib>

namespace cmif
{

int TraceSite::read(const char *key)
{
    const int level = std::atoi(tarnNvramConfig_get(key));
    __atomic_store_n(&inverted_level_, ~level, __ATOMIC_RELAXED);
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
    flockfile(stdout); // other threads print before or after the line, never within it
    std::printf("[CMIF-QMI] - ");
    std::vprintf(format, values);
    funlockfile(stdout);
}

} // namespace cmif
