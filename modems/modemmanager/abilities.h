// What a modem can do for each request, and why not, as far as ModemManager tells before it is
// tried.
#ifndef MODEMS_MODEMMANAGER_ABILITIES_H
#define MODEMS_MODEMMANAGER_ABILITIES_H

#include "modem_view.h"

namespace modem_manager
{

enum class Way { yes, by_at, no, unknown };

struct Ability {
    const char *channel; // "AT" or "QMI"
    int code;
    const char *request;
    Way way;
    const char *why; // "" for a plain yes
};

std::vector<Ability> abilities_of(const ModemView &view, bool at_port);

} // namespace modem_manager

#endif
