// The lines of QMI calls: one text for standard output and for the debug log, where it is dated.
#ifndef CMIF_QMI_LINES_H
#define CMIF_QMI_LINES_H

#include "trace.h"

namespace cmif
{

// To the debug log alone; returns the log writer's result.
[[gnu::format(printf, 1, 2)]] int qmi_log(const char *format, ...);

// To standard output if the site's switch is on, and to the log.
[[gnu::format(printf, 2, 3)]] void qmi_trace_and_log(QmiSite &site, const char *format, ...);

// To standard output whatever the switch is, and to the log.
[[gnu::format(printf, 1, 2)]] void qmi_print_and_log(const char *format, ...);

} // namespace cmif

#endif
