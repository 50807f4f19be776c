// Numbers of the interface and their names: one table for what is shown and what is typed.
#ifndef CMIFCTL_OUTPUT_ENUMS_H
#define CMIFCTL_OUTPUT_ENUMS_H

#include "client/failure.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace cmifctl
{

struct Name {
    int code;
    const char *name;
};
using Names = std::span<const Name>;

namespace names
{

constexpr Name registration[]{{0, "registered"}, {1, "searching"}, {2, "not registered"}};
constexpr Name selection[]{{1, "automatic"}, {2, "manual"}};
constexpr Name search_mode[]{{0, "auto"}, {1, "2g"}, {2, "3g"}, {3, "4g"}, {4, "unknown"}};
constexpr Name settable_search_mode[]{{0, "auto"}, {1, "2g"}, {2, "3g"}, {3, "4g"}};
constexpr Name band_region[]{{1, "all"}, {2, "3g"}, {3, "4g"}, {4, "unknown"}};
constexpr Name settable_band_region[]{{1, "all"}, {2, "3g"}, {3, "4g"}};
constexpr Name roaming[]{{0, "auto"}, {1, "on"}, {2, "off"}};
constexpr Name on_off[]{{0, "off"}, {1, "on"}};
constexpr Name functionality[]{{0, "minimum"}, {1, "full"}, {4, "offline"}};
constexpr Name name_format[]{{0, "long"}, {1, "short"}, {2, "numeric"}};

// The serving cell's technology, renumbered by the library without gaps.
constexpr Name technology[]{{0, "GSM"},         {1, "UTRAN"},       {2, "GSM EGPRS"},
                            {3, "UTRAN HSDPA"}, {4, "UTRAN HSUPA"}, {5, "UTRAN HSPA"},
                            {6, "E-UTRAN"},     {7, "other"}};
// The technology of a provider list, numbered as the modem does (3GPP TS 27.007 <AcT>).
constexpr Name provider_technology[]{{0, "GSM"},         {2, "UTRAN"},       {3, "GSM EGPRS"},
                                     {4, "UTRAN HSDPA"}, {5, "UTRAN HSUPA"}, {6, "UTRAN HSPA"},
                                     {7, "E-UTRAN"}};
constexpr Name generation[]{{0, "2g"}, {2, "3g"}, {7, "4g"}};
constexpr Name provider_state[]{{0, "unknown"}, {1, "available"}, {2, "current"}, {3, "forbidden"}};

constexpr Name connection[]{
    {0, "unknown"}, {1, "disconnected"}, {2, "connecting"}, {3, "connected"}};
constexpr Name pdp_type[]{{0, "IP"}, {1, "PPP"}, {2, "IPV6"}, {3, "IPV4V6"}};
constexpr Name profile_pdp[]{{0, "ipv4"}, {1, "ppp"}, {2, "ipv6"}, {3, "ipv4v6"}};
constexpr Name authentication[]{{0, "none"}, {1, "pap"}, {2, "chap"}, {3, "pap-chap"}};
constexpr Name ip_family[]{{0, "ipv4"}, {1, "ipv6"}};
constexpr Name sim_state[]{{0, "absent"},       {1, "not ready"},    {2, "ready"},
                           {3, "PIN required"}, {4, "PUK required"}, {5, "network locked"},
                           {6, "bad"}};

// Words with no number behind them.
constexpr Name shells[]{{0, "bash"}, {1, "zsh"}};
constexpr Name from_input[]{{0, "-"}};
constexpr Name password_source[]{{0, "ask"}, {1, "-"}};

} // namespace names

// {"code", "name"}; a code outside the table has the name null.
Json enumeration(Names names, int code);

// The same for a code that arrives as text; text that is no code of the table stays the name.
Json named(Names names, const Json &text);

// The code of a name, or of a number of the table written in digits.
std::optional<int> code_of(Names names, std::string_view text);

// "auto|2g|3g|4g"
std::string choices(Names names, std::string_view separator = "|");

} // namespace cmifctl

#endif
