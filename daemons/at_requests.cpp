#include "at_requests.h"

namespace daemons
{
namespace
{

using enum AtFieldSlot;
using enum AtLane;
constexpr bool secret = true;

// clang-format off
const AtRequest at_requests[] = {
    {CMIF_AT_SET_TIME_ZONE,           "shared_CMIF_set_timezone",                     set_time_zone},
    {CMIF_AT_SET_SEARCH_MODE,         "shared_CMIF_set_mobileNetworkMode",            set_search_mode,         {{value, "mode"}}},
    {CMIF_AT_SELECT_AUTOMATICALLY,    "shared_CMIF_SetNetworkMode",                   select_automatically,    {{value, "mode"}}, slow},
    {CMIF_AT_GET_PIN_COUNTERS,        "shared_CMIF_get_mobilePINPUKC",                refresh_pin_counters},
    {CMIF_AT_GET_PACKET_DOMAIN,       "shared_CMIF_get_DomainServiceStatus",          refresh_packet_domain},
    {CMIF_AT_SET_PACKET_DOMAIN,       "shared_CMIF_set_DomainServiceStatus",          set_packet_domain,       {{value, "attached"}}},
    {CMIF_AT_GET_PIN_MODE,            "shared_CMIF_get_mobileSimPINMode",             refresh_pin_mode},
    {CMIF_AT_SET_PIN_MODE,            "shared_CMIF_set_mobileSimPINMode",             set_pin_mode,            {{string1, "mode"}, {string2, "pin", secret}}},
    {CMIF_AT_LOCK_NETWORK,            "shared_CMIF_set_NetworkPersonalizationLock",   lock_network,            {{value, "facility"}, {string1, "mode"}, {string2, "network"}, {string3, "key", secret}}},
    {CMIF_AT_UNLOCK_NETWORK,          "shared_CMIF_set_NetworkPersonalizationUNLock", unlock_network,          {{string1, "key", secret}}},
    {CMIF_AT_ENTER_PIN,               "shared_CMIF_set_EntermobilePIN",               enter_pin,               {{string1, "pin", secret}}},
    {CMIF_AT_CHANGE_PIN,              "shared_CMIF_set_ChangemobileSimPIN",           change_pin,              {{string1, "old_pin", secret}, {string2, "new_pin", secret}}},
    {CMIF_AT_ENTER_PUK,               "shared_CMIF_set_EntermobilePINPUK",            enter_puk,               {{string1, "puk", secret}, {string2, "new_pin", secret}}},
    {CMIF_AT_SET_ROAMING,             "shared_CMIF_set_mobileInternationalRoam",      set_roaming,             {{value, "roaming"}}},
    {CMIF_AT_SET_OPERATOR_FORMAT,     "shared_Set_Operator_Selection_switch_format",  set_operator_format,     {{value, "format"}}},
    {CMIF_AT_SELECT_OPERATOR,         "shared_CMIF_SetNetworkProvider",               select_operator,         {{string1, "numeric"}, {string2, "technology"}}, slow},
    {CMIF_AT_LIST_MESSAGES,           "shared_CMIF_get_mobileSMSInfo",                list_messages},
    {CMIF_AT_DELETE_MESSAGES,         "shared_CMIF_set_DeletemobileSMS",              delete_messages,         {{string1, "index"}, {string2, "flag"}}},
    {CMIF_AT_DOWNLOAD_MODE,           "shared_CMIF_set_AT_qfirehose",                 nullptr},
    {CMIF_AT_FACTORY_RESET,           "shared_CMIF_set_FactoryReset",                 factory_reset},
    {CMIF_AT_SET_FUNCTIONALITY,       "shared_CMIF_set_phone_functionality",          set_functionality,       {{first_byte, "level"}}},
    {CMIF_AT_GET_SEARCH_STATE,        "shared_CMIF_get_ModeManualSearch",             get_search_state},
    {CMIF_AT_SEARCH,                  "shared_CMIF_set_ModeManualSearch",             search,                  {}, slow},
    {CMIF_AT_SET_PROFILE,             "shared_CMIF_set_Profile",                      set_profile,             {{value, "profile"}, {string1, "type"}, {string2, "apn"}}},
    {CMIF_AT_START_DEVICE_MANAGEMENT, "shared_CMIF_set_TriggerOTADMSession",          start_device_management},
    {CMIF_AT_SYNCHRONIZE_PROFILE,     "shared_CMIF_get_SyncProfile3",                 synchronize_profile},
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

} // namespace daemons
