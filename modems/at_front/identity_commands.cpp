// Who made the modem, and which one it is.
#include "command.h"

namespace at_front
{
namespace
{

constexpr const char *manufacturer = "CMIF";

Answer show_manufacturer(Call &)
{
    return line(manufacturer);
}

Answer show_model(Call &call)
{
    return line(call.device.model());
}

Answer show_revision(Call &)
{
    return line(ModemState::firmware);
}

Answer show_serial_number(Call &)
{
    return line(ModemState::imei);
}

Answer show_all(Call &call)
{
    return {{"Manufacturer: " + std::string(manufacturer), "Model: " + call.device.model(),
             "Revision: " + std::string(ModemState::firmware),
             "IMEI: " + std::string(ModemState::imei), "+GCAP: +CGSM"}};
}

Answer show_capabilities(Call &)
{
    return line("+GCAP: +CGSM");
}

// clang-format off
constexpr Command rows[] = {
    // name    test  read     set      execute
    {"I",     nullptr, nullptr, nullptr, show_all},
    {"+CGMI", "",      nullptr, nullptr, show_manufacturer},
    {"+CGMM", "",      nullptr, nullptr, show_model},
    {"+CGMR", "",      nullptr, nullptr, show_revision},
    {"+CGSN", "",      nullptr, nullptr, show_serial_number},
    {"+GMI",  "",      nullptr, nullptr, show_manufacturer},
    {"+GMM",  "",      nullptr, nullptr, show_model},
    {"+GMR",  "",      nullptr, nullptr, show_revision},
    {"+GSN",  "",      nullptr, nullptr, show_serial_number},
    {"+GCAP", "",      nullptr, nullptr, show_capabilities},
};
// clang-format on

} // namespace

Commands identity_commands()
{
    return rows;
}

} // namespace at_front
