#include "device_files.h"

#include "sandbox/check.h"

#include <filesystem>
#include <fstream>
#include <sys/mount.h>
#include <unistd.h>

namespace cmif_sim
{
namespace
{

namespace fs = std::filesystem;
using sandbox::check_errno;

// Below /sys.
const fs::path device = "devices/pci0000:00/0000:00:14.0/usb1/1-1";

void bind(const fs::path &source, const fs::path &target, unsigned long flags = 0)
{
    check_errno(mount(source.c_str(), target.c_str(), nullptr, MS_BIND | flags, nullptr) == 0,
                "bind " + target.string());
}

void write_file(const fs::path &path, const std::string &text)
{
    std::ofstream(path) << text << "\n";
}

// Links inside /sys are relative, as in the real one.
void link(const fs::path &sys, const fs::path &name, const fs::path &target)
{
    fs::create_directories((sys / name).parent_path());
    fs::create_directory_symlink(target.lexically_relative(name.parent_path()), sys / name);
}

// The real ones where this user can open new ones by that way, else a set of this box alone.
void make_terminals(const fs::path &real)
{
    if (access((real / "ptmx").c_str(), R_OK | W_OK) == 0)
        return bind(real, "/dev/pts", MS_REC);
    check_errno(mount("devpts", "/dev/pts", "devpts", MS_NOSUID | MS_NOEXEC,
                      "newinstance,ptmxmode=0666") == 0,
                "mount /dev/pts");
}

// The files that programs expect, from the real /dev. Terminals are shared with it.
void make_dev(const fs::path &real)
{
    bind("/dev", real, MS_REC);
    check_errno(mount("cmif-sim", "/dev", "tmpfs", MS_NOSUID, "mode=0755") == 0, "mount /dev");
    for (const char *name : {"null", "zero", "full", "random", "urandom", "tty"})
        if (fs::is_character_file(fs::symlink_status(real / name))) {
            const fs::path target = fs::path("/dev") / name;
            const std::ofstream file(target);
            bind(real / name, target);
        }
    fs::create_directory("/dev/pts");
    make_terminals(real / "pts");
    fs::create_symlink("pts/ptmx", "/dev/ptmx");
    fs::create_directory("/dev/shm");
    fs::permissions("/dev/shm", fs::perms::all | fs::perms::sticky_bit);
    fs::create_symlink("/proc/self/fd", "/dev/fd");
    for (const auto &[name, number] :
         {std::pair("stdin", "0"), std::pair("stdout", "1"), std::pair("stderr", "2")})
        fs::create_symlink(std::string("/proc/self/fd/") + number, std::string("/dev/") + name);
}

void add_interface(const fs::path &sys, int number, const UsbInterface &interface)
{
    const fs::path self = device / ("1-1:1." + std::to_string(number));
    const fs::path end = self / interface.subsystem / interface.name;
    fs::create_directories(sys / end);
    write_file(sys / self / "bInterfaceNumber", "0" + std::to_string(number));
    write_file(sys / self / "bInterfaceClass", "02");
    write_file(sys / self / "bInterfaceSubClass", "02");
    write_file(sys / self / "bInterfaceProtocol", "01");
    link(sys, self / "subsystem", "bus/usb");
    link(sys, self / "driver", fs::path("bus/usb/drivers") / interface.driver);
    link(sys, end / "device", self);
    link(sys, end / "subsystem", fs::path("class") / interface.subsystem);
    link(sys, fs::path("class") / interface.subsystem / interface.name, end);
}

} // namespace

void enter_usb_tree(const std::string &directory)
{
    const fs::path sys = directory + "/sys", real_dev = directory + "/dev";
    fs::create_directories(real_dev);
    for (const UsbInterface &interface : usb_interfaces) {
        fs::create_directories(sys / "bus/usb/drivers" / interface.driver);
        fs::create_directories(sys / "class" / interface.subsystem);
    }
    make_dev(real_dev);
    bind(sys, "/sys");
}

// The vendor is one whose modems ModemManager gives a static address; the product is none of its.
void add_usb_modem(const std::string &directory, const std::vector<std::string> &terminals)
{
    const fs::path sys = directory + "/sys";
    fs::create_directories(sys / device);
    write_file(sys / device / "idVendor", "1546");
    write_file(sys / device / "idProduct", "ffff");
    write_file(sys / device / "bcdDevice", "0100");
    write_file(sys / device / "manufacturer", "CMIF");
    write_file(sys / device / "product", "Simulated modem");
    link(sys, device / "subsystem", "bus/usb");
    int number = 0;
    for (const UsbInterface &interface : usb_interfaces) {
        if (static_cast<std::size_t>(number) < terminals.size())
            fs::create_symlink(terminals[static_cast<std::size_t>(number)],
                               std::string("/dev/") + interface.name);
        add_interface(sys, number++, interface);
    }
}

void remove_usb_modem(const std::string &directory)
{
    const fs::path sys = directory + "/sys";
    for (const UsbInterface &interface : usb_interfaces) {
        fs::remove(sys / "class" / interface.subsystem / interface.name);
        fs::remove(std::string("/dev/") + interface.name);
    }
    fs::remove_all(sys / device);
}

} // namespace cmif_sim
