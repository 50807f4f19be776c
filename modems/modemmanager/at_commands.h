// What the AT port is asked, where ModemManager has no way.
#ifndef MODEMS_MODEMMANAGER_AT_COMMANDS_H
#define MODEMS_MODEMMANAGER_AT_COMMANDS_H

#include "daemons/modem_status.h"

#include <ctime>
#include <string>
#include <string_view>

namespace modem_manager
{

std::string set_packet_domain_command(bool on);
std::string set_profile_command(int number, const daemons::PdpProfile &profile);

// The modem's own network lock. Some vendors have a command of their own to release it.
std::string lock_network_command(std::string_view key);
std::string unlock_network_command(std::string_view vendor, std::string_view key);

// Local time with its offset from UTC.
std::string set_clock_command(std::time_t now, int quarter_hours);

// What a command can carry: nothing in it ends the text or the command.
bool is_apn(std::string_view text);
bool is_control_key(std::string_view text);

} // namespace modem_manager

#endif
