#include "policy.h"

#include "dbus_connection.h"

namespace cmif_sim
{
namespace
{

// To "may this caller do that?": authorized, no challenge, no details. To a question for all
// properties: none.
DbusMessage answer_to(const DbusMessage &call)
{
    DbusMessage answer;
    answer.destination = call.sender;
    answer.reply_to = call.serial;
    answer.type = DbusMessage::reply;
    DbusBody body;
    if (call.member == "CheckAuthorization") {
        answer.signature = "(bba{ss})";
        body.add_number(1);
        body.add_number(0);
        body.add_number(0);
        body.align(8);
    } else if (call.member == "GetAll") {
        answer.signature = "a{sv}";
        body.add_number(0);
        body.align(8);
    } else {
        answer.type = DbusMessage::failure;
        answer.error = "org.freedesktop.DBus.Error.UnknownMethod";
    }
    answer.body = body.bytes();
    return answer;
}

} // namespace

void serve_policy(const std::string &bus_path, const std::function<void()> &ready)
{
    DbusConnection bus(bus_path);
    bus.take_name("org.freedesktop.PolicyKit1");
    ready();
    for (;;) {
        const DbusMessage message = bus.receive();
        if (message.type == DbusMessage::call && message.wants_reply)
            bus.send(answer_to(message));
    }
}

} // namespace cmif_sim
