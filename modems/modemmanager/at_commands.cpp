#include "at_commands.h"

#include "daemons/digits.h"
#include "daemons/pdp_type.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

namespace modem_manager
{
namespace
{

std::string quoted(std::string_view text)
{
    return '"' + std::string(text) + '"';
}

std::string lower(std::string_view text)
{
    std::string out(text);
    std::transform(out.begin(), out.end(), out.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return out;
}

// Vendors, by a part of the manufacturer's name in small letters, with the beginning of their own
// command; all others have that of the standard.
struct UnlockCommand {
    const char *vendor, *beginning;
};
constexpr UnlockCommand unlock_commands[] = {
    {"huawei", "^CARDLOCK="},
    {"zte", "+ZNCK="},
};

} // namespace

std::string set_packet_domain_command(bool on)
{
    return on ? "+CGATT=1" : "+CGATT=0";
}

std::string set_profile_command(int number, const daemons::PdpProfile &profile)
{
    return "+CGDCONT=" + std::to_string(number) + "," + quoted(daemons::name_of(profile.type)) +
           "," + quoted(profile.apn);
}

std::string lock_network_command(std::string_view key)
{
    return "+CLCK=\"PN\",1," + quoted(key);
}

std::string unlock_network_command(std::string_view vendor, std::string_view key)
{
    const std::string name = lower(vendor);
    for (const UnlockCommand &row : unlock_commands)
        if (name.find(row.vendor) != std::string::npos)
            return row.beginning + quoted(key);
    return "+CLCK=\"PN\",0," + quoted(key);
}

std::string set_clock_command(std::time_t now, int quarter_hours)
{
    constexpr int quarter = 15 * 60;
    const std::time_t local = now + static_cast<std::time_t>(quarter_hours) * quarter;
    std::tm parts{};
    char text[32], zone[8];
    gmtime_r(&local, &parts);
    const std::size_t length = std::strftime(text, sizeof text, "%Y/%m/%d,%H:%M:%S", &parts);
    std::snprintf(zone, sizeof zone, "%+03d", quarter_hours % 100);
    return "+CCLK=" + quoted(std::string(text, length).substr(2) + zone);
}

bool is_apn(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](unsigned char c) {
        return std::isalnum(c) != 0 || c == '-' || c == '.' || c == '_';
    });
}

bool is_control_key(std::string_view text)
{
    return daemons::is_digits(text, 1, 16);
}

} // namespace modem_manager
