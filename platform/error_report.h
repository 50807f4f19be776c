// What goes wrong is said on standard error, in a line that tells where, what and how to mend it.
#ifndef PLATFORM_ERROR_REPORT_H
#define PLATFORM_ERROR_REPORT_H

#include <string>

namespace host_store
{

// "cmif store: WHERE: WHAT; REMEDY", once per process however often it happens.
void complain(const std::string &where, const std::string &what, const std::string &remedy);

} // namespace host_store

#endif
