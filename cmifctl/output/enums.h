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
// Numbered as in 3GPP TS 27.007: <stat> of +CREG, <AcT>, <stat> of +COPS.
constexpr EnumValue registration[]         = {{0, "not_registered"}, {1, "home", "", "registered (home)"}, {2, "searching"},
                                              {3, "denied"}, {4, "unknown"},
                                              {5, "roaming", "", "registered (roaming)"}};
constexpr EnumValue technology[]           = {{0, "gsm", "2g", "GSM"}, {2, "utran", "3g", "UTRAN"}, {3, "gsm_egprs", "", "GSM EGPRS"},
                                              {4, "utran_hsdpa", "", "UTRAN HSDPA"}, {5, "utran_hsupa", "", "UTRAN HSUPA"},
                                              {6, "utran_hspa", "", "UTRAN HSPA"}, {7, "eutran", "4g", "E-UTRAN"}, {100, "other"}};
constexpr EnumValue selectable_technology[] = {{0, "gsm", "2g"}, {2, "utran", "3g"}, {7, "eutran", "4g"}};
constexpr EnumValue provider_status[]      = {{0, "unknown"}, {1, "available"}, {2, "current"}, {3, "forbidden"}};

constexpr EnumValue selection[]            = {{1, "automatic"}, {2, "manual"}};
constexpr EnumValue search_mode[]          = {{0, "auto"}, {1, "gsm", "2g", "GSM"}, {2, "utran", "3g", "UTRAN"}, {3, "eutran", "4g", "E-UTRAN"}};
constexpr EnumValue band_region[]          = {{1, "all"}, {2, "utran", "3g", "UTRAN"}, {3, "eutran", "4g", "E-UTRAN"}};
constexpr EnumValue roaming[]              = {{0, "auto"}, {1, "on"}, {2, "off"}};
constexpr EnumValue on_off[]               = {{0, "off"}, {1, "on"}};
constexpr EnumValue functionality[]        = {{0, "minimum"}, {1, "full"}, {4, "radio_off", "offline"}};
constexpr EnumValue name_format[]          = {{0, "long"}, {1, "short"}, {2, "numeric"}};

constexpr EnumValue packet_service[]       = {{0, "detached", "off"}, {1, "attached", "on"}};
constexpr EnumValue connection[]           = {{0, "unknown"}, {1, "disconnected"}, {2, "connecting"}, {3, "connected"}};
constexpr EnumValue pdp_type[]             = {{0, "ipv4", "IP", "IPv4"}, {1, "ppp", "PPP", "PPP"}, {2, "ipv6", "IPV6", "IPv6"},
                                              {3, "ipv4v6", "IPV4V6", "IPv4v6"}};
constexpr EnumValue authentication[]       = {{0, "none"}, {1, "pap", "", "PAP"}, {2, "chap", "", "CHAP"},
                                              {3, "pap_or_chap", "pap-chap", "PAP or CHAP"}};
constexpr EnumValue ip_family[]            = {{0, "ipv4", "", "IPv4"}, {1, "ipv6", "", "IPv6"}};
constexpr EnumValue sim_state[]            = {{0, "absent", "NOT INSERTED"}, {1, "not_ready", "NOT READY"}, {2, "ready", "READY"},
                                              {3, "pin_required", "SIM PIN", "PIN required"},
                                              {4, "puk_required", "SIM PUK", "PUK required"},
                                              {5, "network_locked", "PH-NET PIN"}, {6, "permanently_blocked", "SIM FAILURE"}};

// Words whose numbers mean nothing.
constexpr EnumValue output_formats[]       = {{0, "human"}, {1, "json"}, {2, "keyvalue"}};
constexpr EnumValue colours[]              = {{0, "auto"}, {1, "always"}, {2, "never"}};
constexpr EnumValue from_input[]           = {{0, "-"}};
constexpr EnumValue password_source[]      = {{0, "ask"}, {1, "-"}};
// clang-format on

} // namespace enums

// {"code", "name"}; a code outside the table has the name null. `raw` is a code, a text that stands
// for one, or null, which stays null. An unknown text is {"code": null, "name": null, "text"}.
Json enumeration(EnumTable table, const Json &raw);

// The same for people: "unknown (9)" for a code outside the table, empty for null.
std::string enumeration_text(EnumTable table, const Json &raw);

} // namespace cmifctl

#endif
