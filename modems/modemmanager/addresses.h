// Keeps the interface of a data connection at the address that the network has given.
#ifndef MODEMS_MODEMMANAGER_ADDRESSES_H
#define MODEMS_MODEMMANAGER_ADDRESSES_H

#include "ip_settings.h"

namespace modem_manager
{

class Addresses
{
public:
    Addresses() = default;
    ~Addresses() { take_away(); }
    Addresses(const Addresses &) = delete;
    Addresses &operator=(const Addresses &) = delete;

    // Sets the addresses, a default route for each, and the MTU, and brings the interface up; what
    // was set before goes. A line on standard error when that fails, or when a client is needed.
    // Nothing happens when the settings are those of the last time.
    void apply(const IpSettings &settings);

private:
    void set() const;
    void take_away();

    IpSettings set_;
};

} // namespace modem_manager

#endif
