// The modem's clock, which shows local time, and its time zone.
#include "command.h"
#include "daemons/digits.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace at_front
{
namespace
{

constexpr const char *date_and_time = "%y/%m/%d,%H:%M:%S";
constexpr int max_zone = 56; // quarters of an hour: 14 hours

struct Clock {
    std::time_t local = 0;
    int zone = 0;
};

// "24/03/06,12:00:00+04"; nothing for a text of another form.
std::optional<Clock> parse_clock(const std::string &text)
{
    std::tm parts{};
    const char *rest = strptime(text.c_str(), date_and_time, &parts);
    if (rest == nullptr || (*rest != '+' && *rest != '-') || std::string_view(rest).size() != 3 ||
        !daemons::is_digits(rest + 1, 2, 2))
        return std::nullopt;
    const int zone = (*rest == '-' ? -1 : 1) * ((rest[1] - '0') * 10 + (rest[2] - '0'));
    if (std::abs(zone) > max_zone)
        return std::nullopt;
    return Clock{timegm(&parts), zone};
}

Answer read_clock(Call &call)
{
    const std::time_t local = call.device.clock();
    const int zone =
        call.device.inspect([](const ModemState &state, Time) { return state.time_zone; });
    std::tm parts{};
    gmtime_r(&local, &parts);
    char text[32];
    const std::size_t size = std::strftime(text, sizeof text, "%Y/%m/%d,%H:%M:%S", &parts);
    std::snprintf(text + size, sizeof text - size, "%+03d", zone);
    constexpr std::size_t century = 2; // the year has two digits
    return line("+CCLK: \"" + std::string(text + century) + "\"");
}

Answer set_clock(Call &call)
{
    const auto clock = parse_clock(call.given.text(0));
    if (!clock)
        return incorrect;
    call.device.modem().set_time_zone(clock->zone);
    call.device.set_clock(clock->local);
    return ok;
}

Answer read_time_zone_reports(Call &call)
{
    return line("+CTZR: " + std::to_string(static_cast<int>(call.session.time_zone_reports)));
}

Answer set_time_zone_reports(Call &call)
{
    return set_flag(call, call.session.time_zone_reports);
}

// The simulated network sends no time, so the flag has no effect.
Answer read_time_zone_update(Call &call)
{
    return line("+CTZU: " + std::to_string(static_cast<int>(call.session.time_zone_update)));
}

Answer set_time_zone_update(Call &call)
{
    return set_flag(call, call.session.time_zone_update);
}

// clang-format off
constexpr Command rows[] = {
    // name    test     read                    set                    execute
    {"+CCLK", "",      read_clock,             set_clock,             nullptr},
    {"+CTZR", "(0,1)", read_time_zone_reports, set_time_zone_reports, nullptr},
    {"+CTZU", "(0,1)", read_time_zone_update,  set_time_zone_update,  nullptr},
};
// clang-format on

} // namespace

Commands clock_commands()
{
    return rows;
}

} // namespace at_front
