// What the provider list's readers do, written a second time: with strings, for reading.
#ifndef TESTS_CMIF_REFERENCE_PROVIDER_LIST_H
#define TESTS_CMIF_REFERENCE_PROVIDER_LIST_H

#include "cmif/cmif.h"

#include <string>
#include <string_view>

namespace reference
{
// The bytes that symbol_filter copies, and its result.
struct Filtered {
    int result;
    std::string copied;
};
Filtered symbol_filter(std::string_view source);

// What shared_CMIF_GetNetworkProviderList prints for a file that holds `file`; fills `list`.
std::string provider_list(std::string_view file, cmif_provider_info *list);
} // namespace reference

#endif
