#include "qmi_daemon.h"

#include "cmif/cmif.h"
#include "daemons/publish/connection_keys.h"
#include "daemons/publish/public_file.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <unistd.h>

namespace sim
{
namespace
{

static_assert(sizeof qmi_msg::payload == CMIF_QMI_PAYLOAD);

std::string bytes_of(std::int32_t number)
{
    std::string bytes(sizeof number, '\0');
    std::memcpy(bytes.data(), &number, sizeof number);
    return bytes;
}
std::string bytes_of(SimIndex index)
{
    return bytes_of(static_cast<std::int32_t>(index));
}
std::string bytes_of(const std::string &text)
{
    return text;
}

// As the log takes them.
int shown(RetCode code)
{
    return code;
}
std::string shown(SimIndex index)
{
    return "status=" + std::to_string(static_cast<int>(index));
}
std::string shown(const std::string &text)
{
    return '"' + text + '"';
}

} // namespace

QmiDaemon::QmiDaemon(Modem &modem, bool verbose)
    : modem_(modem), log_("QMI", verbose), requests_(CMIF_QMI_REQUEST_KEY),
      replies_(CMIF_QMI_REPLY_KEY)
{
}

// The marker goes first: who finds it gone sends nothing that would not be answered.
QmiDaemon::~QmiDaemon()
{
    if (thread_)
        unlink(CMIF_QMI_READY_FILE);
    stop_.raise();
}

// A marker that is there already was left by a daemon that was killed, and so were replies.
bool QmiDaemon::start()
{
    unlink(CMIF_QMI_READY_FILE);
    if (!requests_.prepare() || !replies_.prepare())
        return false;
    replies_.clear();
    modem_.change([](ModemState &state) {
        if (auto_connect_is_on())
            state.connection.start_when_possible();
        return ret_ok;
    });
    thread_.emplace(requests_, stop_,
                    [this](const char *bytes, std::size_t payload) { serve(bytes, payload); });
    return write_public_file(CMIF_QMI_READY_FILE, "on\n");
}

void QmiDaemon::serve(const char *bytes, std::size_t payload)
{
    long code = 0;
    std::memcpy(&code, bytes, sizeof code);
    const std::string_view arguments(bytes + sizeof code, payload);
    const QmiRequest *request = find_qmi_request(code);
    if (!request) {
        log_.request(code, unknown_request, "");
        return reply(code, unknown_request, ret_not_supported);
    }
    log_.request(code, request->name, request->describe ? request->describe(arguments) : "");
    if (!request->handle)
        return;
    reply(code, request->name,
          modem_.change([&](ModemState &state) { return request->handle(state, arguments); }));
}

// The whole payload always; what the answer leaves of it is zero.
void QmiDaemon::reply(long code, const char *name, const QmiAnswer &answer)
{
    qmi_msg record{};
    record.mtype = code;
    const std::string bytes = std::visit([](const auto &value) { return bytes_of(value); }, answer);
    std::memcpy(record.payload, bytes.data(), std::min(bytes.size(), sizeof record.payload - 1));
    if (replies_.send(&record, CMIF_QMI_PAYLOAD, stop_))
        std::visit([&](const auto &value) { log_.reply(code, name, shown(value)); }, answer);
}

} // namespace sim
