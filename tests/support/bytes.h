// An object as bytes, padding too: for comparing all that a call may have written.
#pragma once

#include <string>

template <class Object>
std::string bytes_of(const Object &object)
{
    return {reinterpret_cast<const char *>(&object), sizeof object};
}
