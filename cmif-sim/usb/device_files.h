// What a computer shows of a USB modem: plain files in place of /sys, links in /dev.
#ifndef CMIF_SIM_USB_DEVICE_FILES_H
#define CMIF_SIM_USB_DEVICE_FILES_H

#include <string>
#include <vector>

namespace cmif_sim
{

// Puts a /sys with nothing but an empty USB bus over the real one, and over /dev one with the usual
// files, to which names can be added. For a process in a mount namespace of its own; `directory` is
// a new one for the files. Throws std::exception.
void enter_usb_tree(const std::string &directory);

// A port, or a network interface, of the modem.
struct UsbInterface {
    const char *subsystem, *name, *driver;
    bool managed = true; // ModemManager is told of it
};
inline constexpr std::size_t usb_terminals = 3; // the first ones
inline constexpr UsbInterface usb_interfaces[] = {
    {"tty", "ttyACM0", "cdc_acm"},
    {"tty", "ttyACM1", "cdc_acm"},
    {"tty", "ttyACM2", "cdc_acm", false},
    {"net", "wwan0", "rndis_host"},
};

// The modem's device appears, its first ports being these terminals; and goes.
void add_usb_modem(const std::string &directory, const std::vector<std::string> &terminals);
void remove_usb_modem(const std::string &directory);

} // namespace cmif_sim

#endif
