#include "manager_watch.h"

#include <exception>

namespace cmif_sim
{

ManagerWatch::ManagerWatch(const std::string &bus, std::function<void()> started)
    : news_(bus), started_(std::move(started))
{
    news_.ask_for("type='signal',member='NameOwnerChanged',arg0='" + std::string(manager_name) +
                  "'");
    thread_ = std::thread([this] { watch(); });
}

ManagerWatch::~ManagerWatch()
{
    news_.end();
    thread_.join();
}

void ManagerWatch::watch()
try {
    for (;;) {
        const DbusMessage message = news_.receive();
        if (message.member == "NameOwnerChanged" && !texts_of(message).back().empty())
            started_();
    }
} catch (const std::exception &) {
    return; // the bus has ended, or this has
}

} // namespace cmif_sim
