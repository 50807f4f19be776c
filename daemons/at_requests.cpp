#include "at_requests.h"

#include "daemons/publish/message_keys.h"
#include "daemons/publish/provider_file.h"
#include "digits.h"

#include <ctime>

namespace sim
{

using namespace daemons;

namespace
{

using M = ModemState;
using Args = AtArguments;

// Values that a setting can have, as they stand in the record.
std::optional<int> one_of(const std::string &text, std::initializer_list<int> values)
{
    const std::optional<int> number = to_number(text);
    if (!number || std::find(values.begin(), values.end(), *number) == values.end())
        return std::nullopt;
    return number;
}

RetCode set_time_zone(M &modem, const Args &)
{
    tzset(); // the system's zone may have changed since the last time
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    if (localtime_r(&now, &local))
        modem.time_zone = static_cast<int>(local.tm_gmtoff / (15L * 60));
    return ret_ok;
}

RetCode set_search_mode(M &modem, const Args &args)
{
    const auto mode = one_of(args[0], {0, 1, 2, 3});
    if (!mode)
        return ret_incorrect_parameters;
    modem.network.set_search_mode(static_cast<SearchMode>(*mode));
    return ret_ok;
}

RetCode select_automatically(M &modem, const Args &args)
{
    if (args[0] != "0")
        return ret_incorrect_parameters;
    modem.network.select_automatically();
    return ret_ok;
}

RetCode set_packet_domain(M &modem, const Args &args)
{
    const auto attached = one_of(args[0], {0, 1});
    if (!attached)
        return ret_incorrect_parameters;
    modem.packet_domain = *attached == 1;
    return ret_ok;
}

RetCode set_pin_mode(M &modem, const Args &args)
{
    const auto enabled = one_of(args[0], {0, 1});
    if (!enabled)
        return ret_incorrect_parameters;
    return modem.sim.pin1.set_enabled(*enabled == 1, args[1]);
}

RetCode set_roaming(M &modem, const Args &args)
{
    const auto roaming = one_of(args[0], {1, 2, 255});
    if (!roaming)
        return ret_incorrect_parameters;
    modem.network.set_roaming(static_cast<Roaming>(*roaming));
    return ret_ok;
}

RetCode set_operator_format(M &modem, const Args &args)
{
    const auto format = one_of(args[0], {0, 1, 2});
    if (!format)
        return ret_incorrect_parameters;
    modem.operator_format = static_cast<OperatorFormat>(*format);
    return ret_ok;
}

RetCode list_messages(M &modem, const Args &)
{
    publish_messages(modem.messages.all());
    modem.messages.mark_all_read();
    return ret_ok;
}

RetCode delete_messages(M &modem, const Args &args)
{
    const RetCode code = modem.messages.remove(args[0], args[1]);
    publish_messages(modem.messages.all());
    return code;
}

RetCode factory_reset(M &modem, const Args &)
{
    modem.factory_reset();
    publish_messages({});
    remove_provider_file();
    return ret_ok;
}

RetCode lock_network(M &modem, const Args &args)
{
    return modem.lock.set(args[0], args[1], args[2], args[3], SimCard::home_network);
}

RetCode start_session(M &modem, const Args &)
{
    return modem.start_device_management(Clock::now());
}

RetCode synchronize(M &modem, const Args &)
{
    modem.profiles.synchronize();
    return ret_ok;
}

// What a query asks for is published anyway, as after every request.
RetCode query(M &, const Args &)
{
    return ret_ok;
}

using enum AtPlace;
constexpr bool secret = true;

// clang-format off
const AtRequest at_requests[] = {
    { 1, "shared_CMIF_set_timezone", set_time_zone},
    { 2, "shared_CMIF_set_mobileNetworkMode", set_search_mode, {{value, "mode"}}},
    { 3, "shared_CMIF_SetNetworkMode", select_automatically, {{value, "mode"}}},
    { 4, "shared_CMIF_get_mobilePINPUKC", query},
    { 6, "shared_CMIF_get_DomainServiceStatus", query},
    { 7, "shared_CMIF_set_DomainServiceStatus", set_packet_domain, {{value, "attached"}}},
    { 8, "shared_CMIF_get_mobileSimPINMode", query},
    { 9, "shared_CMIF_set_mobileSimPINMode", set_pin_mode,
         {{string1, "mode"}, {string2, "pin", secret}}, Needs::open_sim},
    {10, "shared_CMIF_set_NetworkPersonalizationLock", lock_network,
         {{value, "facility"}, {string1, "mode"}, {string2, "network"}, {string3, "key", secret}},
         Needs::open_sim},
    {11, "shared_CMIF_set_NetworkPersonalizationUNLock",
         [](M &m, const Args &args) { return m.lock.unlock(args[0]); },
         {{string1, "key", secret}}, Needs::open_sim},
    {12, "shared_CMIF_set_EntermobilePIN",
         [](M &m, const Args &args) { return m.sim.pin1.verify(args[0]); },
         {{string1, "pin", secret}}},
    {13, "shared_CMIF_set_ChangemobileSimPIN",
         [](M &m, const Args &args) { return m.sim.pin1.change(args[0], args[1]); },
         {{string1, "old_pin", secret}, {string2, "new_pin", secret}}, Needs::open_sim},
    {14, "shared_CMIF_set_EntermobilePINPUK",
         [](M &m, const Args &args) { return m.sim.pin1.unblock(args[0], args[1]); },
         {{string1, "puk", secret}, {string2, "new_pin", secret}}},
    {15, "shared_CMIF_set_mobileInternationalRoam", set_roaming, {{value, "roaming"}}},
    {16, "shared_Set_Operator_Selection_switch_format", set_operator_format, {{value, "format"}}},
    {17, "shared_CMIF_SetNetworkProvider",
         [](M &m, const Args &args) { return m.network.select(args[0], args[1]); },
         {{string1, "numeric"}, {string2, "technology"}}, Needs::radio},
    {18, "shared_CMIF_get_mobileSMSInfo", list_messages, {}, Needs::open_sim},
    {19, "shared_CMIF_set_DeletemobileSMS", delete_messages,
         {{string1, "index"}, {string2, "flag"}}, Needs::open_sim},
    {20, "shared_CMIF_set_AT_qfirehose", query, {}, Needs::nothing, AtAnswer::never},
    {21, "shared_CMIF_set_FactoryReset", factory_reset},
    {22, "shared_CMIF_set_phone_functionality",
         [](M &m, const Args &args) { return m.set_functionality(args[0]); },
         {{first_byte, "level"}}},
    {23, "shared_CMIF_get_ModeManualSearch", [](M &m, const Args &) { return m.search_result; }},
    {24, "shared_CMIF_set_ModeManualSearch", query, {}, Needs::radio, AtAnswer::after_search},
    {25, "shared_CMIF_set_Profile",
         [](M &m, const Args &args) { return m.profiles.set(args[0], args[1], args[2]); },
         {{value, "profile"}, {string1, "type"}, {string2, "apn"}}},
    {26, "shared_CMIF_set_TriggerOTADMSession", start_session, {}, Needs::network},
    {27, "shared_CMIF_get_SyncProfile3", synchronize},
};
// clang-format on

} // namespace

const AtRequest *find_at_request(long code)
{
    for (const AtRequest &request : at_requests)
        if (request.code == code)
            return &request;
    return nullptr;
}

} // namespace sim
