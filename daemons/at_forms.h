// The form of each request of the AT channel: the fields of the record that it uses.
#ifndef DAEMONS_AT_FORMS_H
#define DAEMONS_AT_FORMS_H

#include "cmif/cmif.h"

namespace daemons
{

// Where a field is in the record. `first_byte` is the first of set_string, as a number.
enum class AtFieldSlot { none, string1, string2, string3, value, first_byte };

struct AtField {
    AtFieldSlot slot = AtFieldSlot::none;
    const char *label = "";
    bool secret = false;
};

struct AtForm {
    cmif_at_code code;
    const char *name;
    AtField fields[4] = {};
};

namespace at_form_rows
{

using enum AtFieldSlot;
constexpr bool secret = true;

// clang-format off
inline constexpr AtForm rows[] = {
    //code                            name                                            fields, in the order in which they are filled
    {CMIF_AT_SET_TIME_ZONE,           "shared_CMIF_set_timezone"},
    {CMIF_AT_SET_SEARCH_MODE,         "shared_CMIF_set_mobileNetworkMode",            {{value, "mode"}}},
    {CMIF_AT_SELECT_AUTOMATICALLY,    "shared_CMIF_SetNetworkMode",                   {{value, "mode"}}},
    {CMIF_AT_GET_PIN_COUNTERS,        "shared_CMIF_get_mobilePINPUKC"},
    {CMIF_AT_GET_PACKET_DOMAIN,       "shared_CMIF_get_DomainServiceStatus"},
    {CMIF_AT_SET_PACKET_DOMAIN,       "shared_CMIF_set_DomainServiceStatus",          {{value, "attached"}}},
    {CMIF_AT_GET_PIN_MODE,            "shared_CMIF_get_mobileSimPINMode"},
    {CMIF_AT_SET_PIN_MODE,            "shared_CMIF_set_mobileSimPINMode",             {{string1, "mode"},
                                                                                       {string2, "pin", secret}}},
    {CMIF_AT_LOCK_NETWORK,            "shared_CMIF_set_NetworkPersonalizationLock",   {{value, "facility"},
                                                                                       {string1, "mode"},
                                                                                       {string2, "network"},
                                                                                       {string3, "key", secret}}},
    {CMIF_AT_UNLOCK_NETWORK,          "shared_CMIF_set_NetworkPersonalizationUNLock", {{string1, "key", secret}}},
    {CMIF_AT_ENTER_PIN,               "shared_CMIF_set_EntermobilePIN",               {{string1, "pin", secret}}},
    {CMIF_AT_CHANGE_PIN,              "shared_CMIF_set_ChangemobileSimPIN",           {{string1, "old_pin", secret},
                                                                                       {string2, "new_pin", secret}}},
    {CMIF_AT_ENTER_PUK,               "shared_CMIF_set_EntermobilePINPUK",            {{string1, "puk", secret},
                                                                                       {string2, "new_pin", secret}}},
    {CMIF_AT_SET_ROAMING,             "shared_CMIF_set_mobileInternationalRoam",      {{value, "roaming"}}},
    {CMIF_AT_SET_OPERATOR_FORMAT,     "shared_Set_Operator_Selection_switch_format",  {{value, "format"}}},
    {CMIF_AT_SELECT_OPERATOR,         "shared_CMIF_SetNetworkProvider",               {{string1, "numeric"},
                                                                                       {string2, "technology"}}},
    {CMIF_AT_LIST_MESSAGES,           "shared_CMIF_get_mobileSMSInfo"},
    {CMIF_AT_DELETE_MESSAGES,         "shared_CMIF_set_DeletemobileSMS",              {{string1, "index"},
                                                                                       {string2, "flag"}}},
    {CMIF_AT_DOWNLOAD_MODE,           "shared_CMIF_set_AT_qfirehose"},
    {CMIF_AT_FACTORY_RESET,           "shared_CMIF_set_FactoryReset"},
    {CMIF_AT_SET_FUNCTIONALITY,       "shared_CMIF_set_phone_functionality",          {{first_byte, "level"}}},
    {CMIF_AT_GET_SEARCH_STATE,        "shared_CMIF_get_ModeManualSearch"},
    {CMIF_AT_SEARCH,                  "shared_CMIF_set_ModeManualSearch"},
    {CMIF_AT_SET_PROFILE,             "shared_CMIF_set_Profile",                      {{value, "profile"},
                                                                                       {string1, "type"},
                                                                                       {string2, "apn"}}},
    {CMIF_AT_START_DEVICE_MANAGEMENT, "shared_CMIF_set_TriggerOTADMSession"},
    {CMIF_AT_SYNCHRONIZE_PROFILE,     "shared_CMIF_get_SyncProfile3"},
};
// clang-format on

} // namespace at_form_rows

// The form of a request code, or nullptr.
constexpr const AtForm *find_at_form(long code)
{
    for (const AtForm &form : at_form_rows::rows)
        if (form.code == code)
            return &form;
    return nullptr;
}

} // namespace daemons

#endif
