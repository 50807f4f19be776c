#include "modem_view.h"

#include "daemons/digits.h"

#include <climits>
#include <filesystem>

namespace modem_manager
{
namespace
{

// Several names may lead to a device: those below /sys/bus and /sys/class are links.
bool same_device(const std::string &one, const std::string &other)
{
    namespace fs = std::filesystem;
    std::error_code missing;
    return one == other ||
           (!one.empty() && !other.empty() &&
            fs::weakly_canonical(one, missing) == fs::weakly_canonical(other, missing));
}

// The number at the end of the path: a later modem has a higher one.
int number_of(const std::string &path)
{
    return daemons::to_number(path.substr(path.rfind('/') + 1)).value_or(INT_MAX);
}

} // namespace

bool ModemView::has(const char *interface) const
{
    const auto object = objects_.find(path_);
    return object != objects_.end() && object->second.contains(interface);
}

unsigned ModemView::flags(const char *interface, const char *name) const
{
    return static_cast<unsigned>(get(interface, name).number().value_or(0));
}

int ModemView::state() const
{
    return static_cast<int>(get("State").number().value_or(state::unknown));
}

int ModemView::lock() const
{
    return static_cast<int>(get("UnlockRequired").number().value_or(lock::unknown));
}

// One that is unlocked has the 3GPP interface as soon as it is ready.
bool ModemView::settled() const
{
    const int now = state();
    return now == state::failed || now == state::locked || (now > state::locked && has(modem_3gpp));
}

std::string ModemView::sim_path() const
{
    const std::string path = get("Sim").text();
    return path == no_object ? "" : path;
}

std::string ModemView::connected_bearer() const
{
    for (const std::string &path : get("Bearers").texts())
        if (property(objects_, path, bearer, "Connected").boolean().value_or(false))
            return path;
    return "";
}

std::string find_modem(const Objects &objects, const std::string &device)
{
    std::string found;
    for (const auto &[path, object] : objects) {
        const auto values = object.find(modem);
        if (values == object.end())
            continue;
        if (!device.empty() && !same_device(find(values->second, "Device").text(), device))
            continue;
        if (found.empty() || number_of(path) < number_of(found))
            found = path;
    }
    return found;
}

} // namespace modem_manager
