// PDP types by the names that the configuration store and the AT requests use.
#ifndef DAEMONS_PDP_TYPE_H
#define DAEMONS_PDP_TYPE_H

#include "modem_status.h"

#include <array>
#include <string_view>

namespace daemons
{

// In the order of their numbers.
inline constexpr std::array<const char *, 4> pdp_type_names{"IP", "PPP", "IPV6", "IPV4V6"};

inline const char *name_of(PdpType type)
{
    return pdp_type_names.at(static_cast<std::size_t>(type));
}

inline std::optional<PdpType> pdp_type_of(std::string_view name)
{
    for (std::size_t i = 0; i < pdp_type_names.size(); ++i)
        if (pdp_type_names.at(i) == name)
            return static_cast<PdpType>(i);
    return std::nullopt;
}

} // namespace daemons

#endif
