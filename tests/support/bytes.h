// An object as bytes, padding too: for comparing all that a call may have written.
#ifndef TESTS_SUPPORT_BYTES_H
#define TESTS_SUPPORT_BYTES_H

#include <string>

template <class Object>
std::string bytes_of(const Object &object)
{
    return {reinterpret_cast<const char *>(&object), sizeof object};
}

#endif
