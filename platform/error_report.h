// Reports errors on standard error: one line with the place, the error and its remedy.
#ifndef PLATFORM_ERROR_REPORT_H
#define PLATFORM_ERROR_REPORT_H

#include <string>

namespace host_store
{

// Prints "cmif store: WHERE: WHAT; REMEDY". Each line is printed once per process, however often
// the error occurs; after 64 different lines, further ones are printed each time.
void report_error(const std::string &where, const std::string &what, const std::string &remedy);

} // namespace host_store

#endif
