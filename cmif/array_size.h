// std::size without <iterator>, which brings in much of the C++ library.
#ifndef CMIF_ARRAY_SIZE_H
#define CMIF_ARRAY_SIZE_H

#include <cstddef>

namespace cmif
{

template <typename Item, std::size_t size>
constexpr std::size_t array_size(const Item (&)[size])
{
    return size;
}

} // namespace cmif

#endif
