// Calls: a data modem has none, but software asks.
#include "command.h"

namespace at_front
{
namespace
{

Answer accept(Call &)
{
    return ok;
}

// No voice, and data goes by the network interface.
Answer dial(Call &)
{
    return {{}, Ending::no_carrier};
}

// clang-format off
constexpr Command rows[] = {
    // name    test      read     set      execute
    {"D",     nullptr,  nullptr, nullptr, dial},
    {"H",     nullptr,  nullptr, nullptr, accept},
    {"A",     nullptr,  nullptr, nullptr, dial},
    {"+CHUP", "",       nullptr, nullptr, accept},
    {"+CLCC", "",       nullptr, nullptr, accept},
    {"+CRC",  "(0,1)",  nullptr, accept,  nullptr},
    {"+CLIP", "(0,1)",  nullptr, accept,  nullptr},
    {"+CCWA", "(0,1)",  nullptr, accept,  nullptr},
    {"+CVHU", "(0,1)",  nullptr, accept,  nullptr},
    {"+CMOD", "(0)",    nullptr, accept,  nullptr},
};
// clang-format on

} // namespace

Commands call_commands()
{
    return rows;
}

} // namespace at_front
