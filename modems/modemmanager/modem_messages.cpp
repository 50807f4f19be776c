// Messages. ModemManager numbers its objects, not the indexes in the modem's store, and does not
// tell which are new: those that no listing has shown are.
#include "daemons/digits.h"
#include "message_time.h"
#include "modem.h"

#include <algorithm>

namespace modem_manager
{
namespace
{

using daemons::DeleteFlag;
using daemons::Message;

struct Stored {
    std::string path;
    int state = 0;
    Message message;
};

// The same after a restart of ModemManager, which starts its numbers again.
std::string identity_of(const Message &message)
{
    return message.sender + '\n' + message.time + '\n' + message.text;
}

Stored stored_of(const std::string &path, const Dictionary &values)
{
    Stored stored{path, static_cast<int>(find(values, "State").number().value_or(0)), {}};
    stored.message.index = daemons::to_number(path.substr(path.rfind('/') + 1)).value_or(0);
    stored.message.sender = find(values, "Number").text();
    stored.message.time = service_centre_time(find(values, "Timestamp").text());
    stored.message.text = find(values, "Text").text();
    return stored;
}

bool matches(const Stored &stored, DeleteFlag flag, int index)
{
    const bool read = stored.state == sms_state::received && !stored.message.unread;
    const bool sent = stored.state == sms_state::sent;
    switch (flag) {
    case DeleteFlag::one:
        return stored.message.index == index;
    case DeleteFlag::read:
        return read;
    case DeleteFlag::read_sent:
        return read || sent;
    case DeleteFlag::read_sent_unsent:
        return read || sent || stored.state == sms_state::stored;
    case DeleteFlag::all:
        return true;
    }
    return false;
}

// Those that were received, in the order of their numbers.
std::vector<Message> received(const std::vector<Stored> &all)
{
    std::vector<Message> messages;
    for (const Stored &each : all)
        if (each.state == sms_state::received)
            messages.push_back(each.message);
    std::sort(messages.begin(), messages.end(),
              [](const Message &one, const Message &other) { return one.index < other.index; });
    return messages;
}

} // namespace

class Modem::Store
{
public:
    Store(Modem &owner, const Target &target) : modem_(owner), target_(target) {}

    CmeError read(std::vector<Stored> &all)
    {
        const Reply list = modem_.call(target_, messaging, "List");
        if (list.error != CmeError::ok)
            return list.error;
        for (const std::string &path : list.value.item(0).texts()) {
            const Reply reply = modem_.tree_.bus().call(
                {path, properties, "GetAll", Value(g_variant_new("(s)", sms)), true});
            if (reply.error == CmeError::ok) // it may have gone since
                all.push_back(stored_of(path, reply.value.item(0).dictionary()));
        }
        modem_.with_local_state([&](const LocalState &local) {
            for (Stored &each : all)
                each.message.unread = !local.seen.contains(identity_of(each.message));
        });
        return CmeError::ok;
    }

    CmeError remove(const Stored &stored)
    {
        return modem_
            .call(target_, messaging, "Delete", Value(g_variant_new("(o)", stored.path.c_str())))
            .error;
    }

private:
    Modem &modem_;
    const Target &target_;
};

CmeError Modem::list_messages()
{
    return change(Needs::unlocked_sim, [&](const Target &target) {
        std::vector<Stored> all;
        const CmeError error = Store(*this, target).read(all);
        if (error != CmeError::ok)
            return error;
        with_local_state([&](LocalState &local) {
            local.messages = received(all);
            local.seen.clear();
            for (const Message &message : local.messages)
                local.seen.insert(identity_of(message));
        });
        return CmeError::ok;
    });
}

CmeError Modem::delete_messages(int index, DeleteFlag flag)
{
    return change(Needs::unlocked_sim, [&](const Target &target) {
        Store store(*this, target);
        std::vector<Stored> all;
        CmeError error = store.read(all);
        bool any = false;
        std::erase_if(all, [&](const Stored &each) {
            if (error != CmeError::ok || !matches(each, flag, index))
                return false;
            any = true;
            error = store.remove(each);
            return error == CmeError::ok;
        });
        if (error == CmeError::ok && !any && flag == DeleteFlag::one)
            return CmeError::invalid_index;
        if (error == CmeError::ok || any)
            with_local_state([&](LocalState &local) { local.messages = received(all); });
        return error;
    });
}

} // namespace modem_manager
