#include "qmi_daemon.h"

#include "daemons/publish/connection_keys.h"
#include "daemons/publish/public_file.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <unistd.h>

namespace daemons
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
std::string bytes_of(QmiSimStatus status)
{
    return bytes_of(static_cast<std::int32_t>(status));
}
std::string bytes_of(CmeError error)
{
    return bytes_of(static_cast<std::int32_t>(error));
}
std::string bytes_of(const std::string &text)
{
    return text;
}

// As the log takes them.
CmeError shown(CmeError error)
{
    return error;
}
std::string shown(QmiSimStatus status)
{
    return "status=" + std::to_string(static_cast<int>(status));
}
std::string shown(const std::string &text)
{
    return '"' + text + '"';
}

} // namespace

QmiDaemon::QmiDaemon(Modem &modem, Publisher &publisher, Link &link, StopFlag &stop, bool verbose)
    : modem_(modem), publisher_(publisher), stop_(stop), log_("QMI", verbose), link_(link)
{
}

// Remove the marker first, so that no caller sends a request that will not be answered.
QmiDaemon::~QmiDaemon()
{
    if (thread_)
        unlink(CMIF_QMI_READY_FILE);
    stop_.raise();
    modem_.stop();
}

// A marker that is there already was left by a daemon that was killed.
bool QmiDaemon::start()
{
    unlink(CMIF_QMI_READY_FILE);
    if (!link_.prepare())
        return false;
    if (auto_connect_is_on())
        modem_.connect_when_possible();
    thread_.emplace(link_, stop_,
                    [this](const char *bytes, std::size_t payload) { serve(bytes, payload); });
    return write_public_file(CMIF_QMI_READY_FILE, "on\n");
}

void QmiDaemon::serve(const char *bytes, std::size_t payload)
{
    const auto work = link_.work();
    long code = 0;
    std::memcpy(&code, bytes, sizeof code);
    const std::string_view arguments(bytes + sizeof code, payload);
    const QmiRequest *request = find_qmi_request(code);
    if (!request) {
        log_.request(code, unknown_request, "");
        return reply(code, unknown_request, CmeError::not_supported);
    }
    log_.request(code, request->name, request->describe ? request->describe(arguments) : "");
    if (!request->verb)
        return;
    const QmiAnswer answer = request->verb(modem_, arguments);
    publisher_.publish();
    reply(code, request->name, answer);
}

// Always the whole payload, zero after the answer. The line comes first, before what the caller
// does next.
void QmiDaemon::reply(long code, const char *name, const QmiAnswer &answer)
{
    qmi_msg record{};
    record.mtype = code;
    const std::string bytes = std::visit([](const auto &value) { return bytes_of(value); }, answer);
    std::memcpy(record.payload, bytes.data(), std::min(bytes.size(), sizeof record.payload - 1));
    std::visit([&](const auto &value) { log_.reply(code, name, shown(value)); }, answer);
    link_.send(&record, CMIF_QMI_PAYLOAD, stop_);
}

} // namespace daemons
