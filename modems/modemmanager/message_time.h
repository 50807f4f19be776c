// When a message was sent.
#ifndef MODEMS_MODEMMANAGER_MESSAGE_TIME_H
#define MODEMS_MODEMMANAGER_MESSAGE_TIME_H

#include <string>

namespace modem_manager
{

// ISO 8601 as ModemManager has it, "2024-03-01T08:00:05+01:00", as AT commands show it:
// "24/03/01,08:00:05+04", with the offset from UTC in quarters of an hour. Other text stays.
std::string service_centre_time(const std::string &iso);

} // namespace modem_manager

#endif
