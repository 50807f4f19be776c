// A table as a person reads it, cut to the terminal.
#ifndef CMIFCTL_OUTPUT_TEXT_TABLE_H
#define CMIFCTL_OUTPUT_TEXT_TABLE_H

#include "report.h"

namespace cmifctl
{

// `columns` 0: lines of any length.
std::string render_table(const Table &table, std::size_t columns, bool colour);

} // namespace cmifctl

#endif
