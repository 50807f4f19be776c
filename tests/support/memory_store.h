// The configuration store of the library's tests: the four functions of a platform over memory.
//
// A program that links `test_support` has them from here, even though the library was linked with
// another store. Each thread has one answer buffer, overwritten by every access of any of the four:
// a pointer that is kept too long shows. Each access of the library is a step of the recording
// ("get KEY", "set KEY=VALUE", "match KEY=TEXT", "save"), and is counted.
#ifndef TESTS_SUPPORT_MEMORY_STORE_H
#define TESTS_SUPPORT_MEMORY_STORE_H

#include <string>

namespace store
{
constexpr size_t longest_value = 16383;

// The test's own access: neither a step nor counted.
void set(const std::string &key, const std::string &value);
void unset(const std::string &key);
std::string value(const std::string &key);

// How often tarnNvramConfig_get was asked, for one key or for any.
int reads(const std::string &key);
int reads();

// How often any of the four was called.
int accesses();
} // namespace store

#endif
