#include "usb_modem.h"

#include "device_files.h"
#include "modems/at_front/terminal.h"
#include "network.h"

#include <exception>
#include <stdexcept>

namespace cmif_sim
{
namespace
{

// A dictionary of texts: what happened to which port.
DbusMessage kernel_event(const char *action, const UsbInterface &interface)
{
    DbusMessage message;
    message.path = manager_path;
    message.interface = message.destination = manager_name;
    message.member = "ReportKernelEvent";
    message.wants_reply = false;
    message.signature = "a{sv}";
    DbusBody entries;
    for (const auto &[key, value] :
         {std::pair("action", action), std::pair("subsystem", interface.subsystem),
          std::pair("name", interface.name)}) {
        entries.align(8);
        entries.add_text(key);
        entries.add_signature("s");
        entries.add_text(value);
    }
    DbusBody body;
    body.add_number(static_cast<std::uint32_t>(entries.bytes().size()));
    body.align(8);
    message.body = body.bytes() + entries.bytes();
    return message;
}

} // namespace

UsbModem::UsbModem(std::string directory, const std::string &bus, pid_t computer,
                   at_front::AnswerFaults &answer_faults)
    : directory_(std::move(directory)), computer_(computer), answer_faults_(answer_faults),
      reports_(bus), watch_(bus,
                            [this] {
                                const std::lock_guard lock(mutex_);
                                new_manager_ = true; // which knows nothing of the ports
                                changed_.notify_all();
                            }),
      worker_([this] { work(); })
{
}

UsbModem::~UsbModem()
{
    want(nullptr);
    wait();
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
        changed_.notify_all();
    }
    worker_.join();
}

void UsbModem::want(simulated::Modem *modem)
{
    const std::lock_guard lock(mutex_);
    wanted_ = modem;
    changed_.notify_all();
}

void UsbModem::wait()
{
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return plugged_ == wanted_ || !failure_.empty(); });
}

void UsbModem::plug(simulated::Modem &modem)
{
    want(&modem);
    wait();
    if (!failure_.empty())
        throw std::runtime_error(failure_);
}

void UsbModem::unplug()
{
    want(nullptr);
    wait();
}

// A modem that starts again disappears from the computer meanwhile.
void UsbModem::event(simulated::Modem &modem, std::string_view name)
{
    const std::lock_guard lock(mutex_);
    if (name == "down")
        wanted_ = nullptr;
    if (name == "up")
        wanted_ = &modem;
    if (name == "connected" || name == "disconnected")
        carrier_ = name == "connected";
    changed_.notify_all();
}

void UsbModem::work()
{
    std::unique_lock lock(mutex_);
    bool carrier = false;
    while (!ending_) {
        simulated::Modem *const wanted = wanted_;
        const bool follows = wanted != plugged_ && failure_.empty();
        const bool switches = plugged_ && carrier != carrier_;
        const bool reports = plugged_ && new_manager_;
        if (!follows && !switches && !reports) {
            new_manager_ = false;
            changed_.wait(lock);
            continue;
        }
        carrier = carrier_;
        new_manager_ = false;
        lock.unlock();
        std::string failure;
        try {
            if (follows)
                follow(wanted);
            if (wanted)
                set_carrier(carrier);
            if (reports && !follows)
                report("add");
        } catch (const std::exception &error) {
            failure = error.what();
        }
        lock.lock();
        failure_ = failure;
        if (failure.empty())
            plugged_ = wanted;
        changed_.notify_all();
    }
}

void UsbModem::follow(simulated::Modem *wanted)
{
    if (!wanted)
        return disconnect();
    connect_to(*wanted);
}

void UsbModem::connect_to(simulated::Modem &modem)
{
    front_ = std::make_unique<at_front::Front>(modem, answer_faults_,
                                               at_front::terminals(usb_terminals), managed_model);
    add_usb_modem(directory_, front_->paths());
    add_interface(computer_, "wwan0");
    report("add");
}

void UsbModem::disconnect()
{
    report("remove");
    remove_interface();
    remove_usb_modem(directory_);
    front_.reset();
}

// Without a ModemManager the bus drops it.
void UsbModem::report(const char *action)
{
    for (const UsbInterface &interface : usb_interfaces)
        if (interface.managed)
            reports_.send(kernel_event(action, interface));
}

// The modem is powered over USB.
scenario::Command usb_command(UsbModem *usb, simulated::Modem &modem)
{
    const auto switch_power = [usb, &modem](bool on) {
        if (!usb)
            throw std::runtime_error("USB is not available: the system refuses namespaces");
        modem.apply([on](simulated::ModemState &state, simulated::Time) { state.set_power(on); });
        if (on)
            usb->plug(modem);
        else
            usb->unplug();
    };
    return {"usb", "unplug | plug", "take the modem off the computer, or plug it in",
            [switch_power](scenario::Words &words) -> scenario::Action {
                const bool plugs =
                    words.take_one_of("what happens to the modem", {"unplug", "plug"}) == "plug";
                return [switch_power, plugs] { switch_power(plugs); };
            }};
}

} // namespace cmif_sim
