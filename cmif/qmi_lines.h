// What a QMI call says: one text, two sinks. The log's copy is dated.
#ifndef CMIF_QMI_LINES_H
#define CMIF_QMI_LINES_H

#include "trace.h"

namespace cmif
{

// To the debug log alone; the log writer's result.
[[gnu::format(printf, 1, 2)]] int qmi_log(const char *format, ...);

// To the trace, by its site's switch, and to the log.
[[gnu::format(printf, 2, 3)]] void qmi_step(QmiSite &site, const char *format, ...);

// To standard output, whatever the switch, and to the log.
[[gnu::format(printf, 1, 2)]] void qmi_say(const char *format, ...);

} // namespace cmif

#endif
