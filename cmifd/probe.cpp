#include "missing.h"
#include "modems/modemmanager/abilities.h"
#include "server.h"

#include <cstdio>

namespace cmifd
{
namespace
{

using namespace modem_manager;

const char *text_of(Way way)
{
    switch (way) {
    case Way::yes:
        return "yes";
    case Way::by_at:
        return "by AT";
    case Way::no:
        return "no";
    case Way::unknown:
        break;
    }
    return "unknown";
}

void print_modem(const ModemView &view)
{
    for (const auto &[label, name] : {std::pair{"manufacturer", "Manufacturer"},
                                      {"model", "Model"},
                                      {"revision", "Revision"},
                                      {"device", "Device"},
                                      {"plugin", "Plugin"}})
        std::printf("%-14s %s\n", label, view.get(name).text().c_str());
}

void print_abilities(const ModemView &view, bool at_port)
{
    for (const Ability &each : abilities_of(view, at_port)) {
        const std::string separator = *each.why ? "  " : "";
        std::printf("%-3s %2d  %-30s %s%s%s\n", each.channel, each.code, each.request,
                    text_of(each.way), separator.c_str(), each.why);
    }
}

} // namespace

int probe(const Options &options)
{
    Modem modem(options.modem);
    if (const std::string failure = modem.start(); !failure.empty()) {
        print_missing_bus(failure);
        return 1;
    }
    if (!print_what_is_missing(modem, options.modem.device))
        return 1;
    modem.tree().read([&, path = modem.path()](const Objects &objects) {
        const ModemView view(objects, path);
        print_modem(view);
        std::printf("\n");
        print_abilities(view, !options.modem.at_port.empty());
    });
    return 0;
}

} // namespace cmifd
