// What each request of the AT channel asks: its fields as typed values, in one verb of the modem.
#ifndef DAEMONS_AT_VERBS_H
#define DAEMONS_AT_VERBS_H

#include "at_record.h"
#include "daemons/publish/publisher.h"
#include "modem.h"

#include <atomic>

namespace daemons
{

// What the requests of the AT channel work on.
struct AtFront {
    Modem &modem;
    Publisher &publisher;
    std::atomic<int> searches = 0;              // under way, or waiting to be
    std::atomic<bool> list_not_written = false; // by the last search
};

using AtVerb = CmeError (*)(AtFront &, const AtArguments &);

CmeError set_time_zone(AtFront &front, const AtArguments &);
CmeError set_search_mode(AtFront &front, const AtArguments &arguments);
CmeError select_automatically(AtFront &front, const AtArguments &arguments);
CmeError refresh_pin_counters(AtFront &front, const AtArguments &);
CmeError refresh_packet_domain(AtFront &front, const AtArguments &);
CmeError set_packet_domain(AtFront &front, const AtArguments &arguments);
CmeError refresh_pin_mode(AtFront &front, const AtArguments &);
CmeError set_pin_mode(AtFront &front, const AtArguments &arguments);
CmeError lock_network(AtFront &front, const AtArguments &arguments);
CmeError unlock_network(AtFront &front, const AtArguments &arguments);
CmeError enter_pin(AtFront &front, const AtArguments &arguments);
CmeError change_pin(AtFront &front, const AtArguments &arguments);
CmeError enter_puk(AtFront &front, const AtArguments &arguments);
CmeError set_roaming(AtFront &front, const AtArguments &arguments);
CmeError set_operator_format(AtFront &front, const AtArguments &arguments);
CmeError select_operator(AtFront &front, const AtArguments &arguments);
CmeError list_messages(AtFront &front, const AtArguments &);
CmeError delete_messages(AtFront &front, const AtArguments &arguments);
CmeError factory_reset(AtFront &front, const AtArguments &);
CmeError set_functionality(AtFront &front, const AtArguments &arguments);
CmeError get_search_state(AtFront &front, const AtArguments &);
CmeError search(AtFront &front, const AtArguments &);
CmeError set_profile(AtFront &front, const AtArguments &arguments);
CmeError start_device_management(AtFront &front, const AtArguments &);
CmeError synchronize_profile(AtFront &front, const AtArguments &);

} // namespace daemons

#endif
