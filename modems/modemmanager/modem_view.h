// One modem among ModemManager's objects.
#ifndef MODEMS_MODEMMANAGER_MODEM_VIEW_H
#define MODEMS_MODEMMANAGER_MODEM_VIEW_H

#include "names.h"
#include "object_tree.h"

namespace modem_manager
{

// Valid as long as the objects are.
class ModemView
{
public:
    ModemView(const Objects &objects, std::string path) : objects_(objects), path_(std::move(path))
    {
    }

    const Objects &objects() const { return objects_; }
    const std::string &path() const { return path_; }
    bool has(const char *interface) const;
    Value get(const char *interface, const char *name) const
    {
        return property(objects_, path_, interface, name);
    }
    Value get(const char *name) const { return get(modem, name); }
    unsigned flags(const char *interface, const char *name) const; // 0 when missing

    int state() const;
    int lock() const;
    bool settled() const; // not starting, nor between two states of its SIM

    std::string sim_path() const;
    Value sim(const char *name) const { return property(objects_, sim_path(), sim_card, name); }

    // The bearer that is connected, or "".
    std::string connected_bearer() const;
    Value of_bearer(const char *name) const
    {
        return property(objects_, connected_bearer(), bearer, name);
    }

private:
    const Objects &objects_;
    std::string path_;
};

// The modem with this path in /sys, or the first one if `device` is empty. "" when there is none.
std::string find_modem(const Objects &objects, const std::string &device);

} // namespace modem_manager

#endif
