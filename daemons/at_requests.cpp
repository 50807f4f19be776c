#include "at_requests.h"

namespace daemons
{
namespace
{

using enum AtLane;

consteval AtForm form(cmif_at_code code)
{
    return *find_at_form(code);
}

// clang-format off
const AtRequest at_requests[] = {
    {form(CMIF_AT_SET_TIME_ZONE),           set_time_zone},
    {form(CMIF_AT_SET_SEARCH_MODE),         set_search_mode},
    {form(CMIF_AT_SELECT_AUTOMATICALLY),    select_automatically, slow},
    {form(CMIF_AT_GET_PIN_COUNTERS),        refresh_pin_counters},
    {form(CMIF_AT_GET_PACKET_DOMAIN),       refresh_packet_domain},
    {form(CMIF_AT_SET_PACKET_DOMAIN),       set_packet_domain},
    {form(CMIF_AT_GET_PIN_MODE),            refresh_pin_mode},
    {form(CMIF_AT_SET_PIN_MODE),            set_pin_mode},
    {form(CMIF_AT_LOCK_NETWORK),            lock_network},
    {form(CMIF_AT_UNLOCK_NETWORK),          unlock_network},
    {form(CMIF_AT_ENTER_PIN),               enter_pin},
    {form(CMIF_AT_CHANGE_PIN),              change_pin},
    {form(CMIF_AT_ENTER_PUK),               enter_puk},
    {form(CMIF_AT_SET_ROAMING),             set_roaming},
    {form(CMIF_AT_SET_OPERATOR_FORMAT),     set_operator_format},
    {form(CMIF_AT_SELECT_OPERATOR),         select_operator, slow},
    {form(CMIF_AT_LIST_MESSAGES),           list_messages},
    {form(CMIF_AT_DELETE_MESSAGES),         delete_messages},
    {form(CMIF_AT_DOWNLOAD_MODE),           nullptr},
    {form(CMIF_AT_FACTORY_RESET),           factory_reset},
    {form(CMIF_AT_SET_FUNCTIONALITY),       set_functionality},
    {form(CMIF_AT_GET_SEARCH_STATE),        get_search_state},
    {form(CMIF_AT_SEARCH),                  search, slow},
    {form(CMIF_AT_SET_PROFILE),             set_profile},
    {form(CMIF_AT_START_DEVICE_MANAGEMENT), start_device_management},
    {form(CMIF_AT_SYNCHRONIZE_PROFILE),     synchronize_profile},
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
