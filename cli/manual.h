// The manual page, from the tables.
#ifndef CLI_MANUAL_H
#define CLI_MANUAL_H

#include "table.h"

namespace cli
{

// In troff, for section 1.
std::string manual_page(const Program &program);

} // namespace cli

#endif
