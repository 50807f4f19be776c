// A report as a person reads it: aligned sections, tables cut to the terminal, plain text.
#ifndef CMIFCTL_OUTPUT_TEXT_REPORT_H
#define CMIFCTL_OUTPUT_TEXT_REPORT_H

#include "report.h"

namespace cmifctl
{

// `columns` 0: lines of any length.
std::string render_text(const Report &report, std::size_t columns, bool colour);

} // namespace cmifctl

#endif
