#include "qmi_lines.h"

#include "cmif.h"
#include "debug_log.h"
#include "time_stamp.h"

#include <cstdio>

namespace cmif
{
namespace
{

// While the log is off, nothing is formatted and the clock isn't read.
[[gnu::format(printf, 1, 0)]] int log_line(const char *format, std::va_list values)
{
    if (!g_debug_lte_enable)
        return 0;
    char line[256]; // as long as a message of the log can be
    std::vsnprintf(line, sizeof line, format, values);
    return shared_debug_lte_write_log_file("[CMIF-QMI][%s]%s", TimeStamp().text(), line);
}

} // namespace

int qmi_log(const char *format, ...)
{
    std::va_list values;
    va_start(values, format);
    const int result = log_line(format, values);
    va_end(values);
    return result;
}

void qmi_trace_and_log(QmiSite &site, const char *format, ...)
{
    std::va_list values;
    va_start(values, format);
    site.vprint(format, values);
    va_end(values);
    va_start(values, format);
    log_line(format, values);
    va_end(values);
}

void qmi_print_and_log(const char *format, ...)
{
    std::va_list values;
    va_start(values, format);
    std::vprintf(format, values);
    va_end(values);
    va_start(values, format);
    log_line(format, values);
    va_end(values);
}

} // namespace cmif
