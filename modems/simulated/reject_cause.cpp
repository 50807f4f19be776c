#include "reject_cause.h"

#include <string>
#include <vector>

namespace simulated
{
namespace
{

using enum daemons::CmeError;

// clang-format off
constexpr RejectCause of_registration[] = {
    { 2, "IMSI unknown in HSS",                           network_not_allowed},
    { 3, "illegal device",                                network_not_allowed},
    { 5, "IMEI not accepted",                             network_not_allowed},
    { 6, "illegal equipment",                             network_not_allowed},
    { 7, "EPS services not allowed",                      network_not_allowed},
    { 8, "EPS and other services not allowed",            network_not_allowed},
    {11, "PLMN not allowed",                              network_not_allowed},
    {12, "tracking area not allowed",                     network_not_allowed},
    {13, "roaming not allowed in this tracking area",     network_not_allowed},
    {14, "EPS services not allowed in this PLMN",         network_not_allowed},
    {15, "no suitable cells in tracking area",            network_not_allowed},
    {17, "network failure",                               network_not_allowed},
    {22, "congestion",                                    network_not_allowed},
    {25, "not authorized for this closed group",          network_not_allowed},
    {35, "requested service option not authorized",       network_not_allowed},
    {42, "severe network failure",                        network_not_allowed},
};

constexpr RejectCause of_connection[] = {
    { 8, "operator determined barring",                   network_not_allowed},
    {26, "insufficient resources",                        no_network_service},
    {27, "missing or unknown access point name",          missing_apn},
    {29, "user authentication failed",                    network_not_allowed},
    {33, "requested service option not subscribed",       network_not_allowed},
    {34, "service option temporarily out of order",       no_network_service},
    {36, "regular deactivation",                          no_network_service},
    {38, "network failure",                               no_network_service},
    {39, "reactivation requested",                        ok},
};
// clang-format on

} // namespace

std::span<const RejectCause> registration_causes()
{
    return of_registration;
}

std::span<const RejectCause> connection_causes()
{
    return of_connection;
}

const RejectCause &take_cause(scenario::Words &words, std::span<const RejectCause> causes)
{
    std::vector<std::string> allowed;
    for (const RejectCause &cause : causes) {
        words.offer(std::to_string(cause.number), cause.meaning);
        allowed.push_back(std::to_string(cause.number) + " (" + cause.meaning + ")");
    }
    const std::string rule = scenario::one_of(allowed);
    const std::string text = words.take("the cause", rule).text;
    for (const RejectCause &cause : causes)
        if (text == std::to_string(cause.number))
            return cause;
    words.refuse("the cause", rule);
}

} // namespace simulated
