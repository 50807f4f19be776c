// Numbers of the interface and their names, in one table for output and for arguments.
#ifndef CMIFCTL_OUTPUT_ENUMS_H
#define CMIFCTL_OUTPUT_ENUMS_H

#include "cli/choices.h"
#include "client/failure.h"

namespace cmifctl
{

using client::Exit;
using client::Failure;
using client::Json;

using EnumValue = cli::Choice;
using EnumTable = cli::Choices;

namespace enums
{

// clang-format off
constexpr EnumValue registration[]         = {{0, "registered"}, {1, "searching"}, {2, "not registered"}};
constexpr EnumValue selection[]            = {{1, "automatic"}, {2, "manual"}};
constexpr EnumValue search_mode[]          = {{0, "auto"}, {1, "2g"}, {2, "3g"}, {3, "4g"}, {4, "unknown"}};
constexpr EnumValue settable_search_mode[] = {{0, "auto"}, {1, "2g"}, {2, "3g"}, {3, "4g"}};
constexpr EnumValue band_region[]          = {{1, "all"}, {2, "3g"}, {3, "4g"}, {4, "unknown"}};
constexpr EnumValue settable_band_region[] = {{1, "all"}, {2, "3g"}, {3, "4g"}};
constexpr EnumValue roaming[]              = {{0, "auto"}, {1, "on"}, {2, "off"}};
constexpr EnumValue on_off[]               = {{0, "off"}, {1, "on"}};
constexpr EnumValue functionality[]        = {{0, "minimum"}, {1, "full"}, {4, "offline"}};
constexpr EnumValue name_format[]          = {{0, "long"}, {1, "short"}, {2, "numeric"}};

// The serving cell's technology, which the library renumbers without gaps.
constexpr EnumValue technology[]           = {{0, "GSM"}, {1, "UTRAN"}, {2, "GSM EGPRS"}, {3, "UTRAN HSDPA"},
                                              {4, "UTRAN HSUPA"}, {5, "UTRAN HSPA"}, {6, "E-UTRAN"}, {7, "other"}};
// The technology of a provider list, numbered as in 3GPP TS 27.007 <AcT>.
constexpr EnumValue provider_technology[]  = {{0, "GSM"}, {2, "UTRAN"}, {3, "GSM EGPRS"}, {4, "UTRAN HSDPA"},
                                              {5, "UTRAN HSUPA"}, {6, "UTRAN HSPA"}, {7, "E-UTRAN"}};
constexpr EnumValue generation[]           = {{0, "2g"}, {2, "3g"}, {7, "4g"}};
constexpr EnumValue provider_state[]       = {{0, "unknown"}, {1, "available"}, {2, "current"}, {3, "forbidden"}};

constexpr EnumValue connection[]           = {{0, "unknown"}, {1, "disconnected"}, {2, "connecting"}, {3, "connected"}};
constexpr EnumValue pdp_type[]             = {{0, "IP"}, {1, "PPP"}, {2, "IPV6"}, {3, "IPV4V6"}};
constexpr EnumValue profile_pdp[]          = {{0, "ipv4"}, {1, "ppp"}, {2, "ipv6"}, {3, "ipv4v6"}};
constexpr EnumValue authentication[]       = {{0, "none"}, {1, "pap"}, {2, "chap"}, {3, "pap-chap"}};
constexpr EnumValue ip_family[]            = {{0, "ipv4"}, {1, "ipv6"}};
constexpr EnumValue sim_state[]            = {{0, "absent"}, {1, "not ready"}, {2, "ready"}, {3, "PIN required"},
                                              {4, "PUK required"}, {5, "network locked"}, {6, "permanently blocked"}};

// Words whose numbers mean nothing.
constexpr EnumValue output_formats[]       = {{0, "human"}, {1, "json"}, {2, "keyvalue"}};
constexpr EnumValue colours[]              = {{0, "auto"}, {1, "always"}, {2, "never"}};
constexpr EnumValue from_input[]           = {{0, "-"}};
constexpr EnumValue password_source[]      = {{0, "ask"}, {1, "-"}};
// clang-format on

} // namespace enums

// {"code", "name"}; a code outside the table has the name null.
Json enumeration(EnumTable table, int code);

// The same for a code that arrives as text. Text that isn't a code of the table becomes the name.
Json named(EnumTable table, const Json &text);

} // namespace cmifctl

#endif
