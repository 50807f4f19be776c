#include "result.h"

#include "cmif/cmif.h"
#include "daemons/cme_error.h"

namespace client
{
namespace
{

using daemons::CmeError;

struct Hint {
    CmeError error;
    const char *text;
};

// clang-format off
constexpr Hint hints[] = {
    {CmeError::sim_not_inserted,     "Insert a SIM, then see 'cmifctl sim status'."},
    {CmeError::sim_pin_required,     "Enter it with 'cmifctl sim enter-pin'."},
    {CmeError::sim_puk_required,     "The PIN is blocked: unblock it with 'cmifctl sim enter-puk'."},
    {CmeError::sim_failure,          "A SIM whose PUK is used up is permanently blocked; ask the operator for another."},
    {CmeError::sim_busy,             "The SIM is still starting; try again in a few seconds."},
    {CmeError::incorrect_password,   "See the attempts left with 'cmifctl sim retries'."},
    {CmeError::memory_full,          "Delete messages with 'cmifctl sms delete'."},
    {CmeError::invalid_index,        "See the indexes with 'cmifctl sms list'."},
    {CmeError::no_network_service,   "See the registration with 'cmifctl network show'."},
    {CmeError::network_timeout,      "Try again."},
    {CmeError::network_not_allowed,  "Choose another operator with 'cmifctl network select', or 'cmifctl network auto'."},
    {CmeError::network_pin_required, "Give the control key with 'cmifctl sim unlock-network'."},
    {CmeError::missing_apn,          "Set one with 'cmifctl data profile set --apn NAME'."},
    {CmeError::not_allowed,          "See the current state with 'cmifctl status'."},
    {CmeError::file_not_written,     "Check the free space in /tmp."},
    {CmeError::search_running,       "Wait until it ends; 'cmifctl network scan-state' shows it."},
};
// clang-format on

std::string message(const char *name, const std::string &what)
{
    return std::string(name) + ": " + what;
}

} // namespace

bool channel_failed(int result)
{
    return result == CMIF_NO_REPLY_QUEUE || result == CMIF_NO_QUEUE || result == CMIF_SEND_FAILED;
}

std::string daemon_error_text(int code)
{
    const daemons::CmeErrorText *known = daemons::find_cme_error(code);
    if (known == nullptr)
        return "code " + std::to_string(code);
    return std::string(known->text) + " (" + std::to_string(code) + ")";
}

std::string daemon_error_hint(int code)
{
    for (const Hint &hint : hints)
        if (static_cast<int>(hint.error) == code)
            return hint.text;
    return "";
}

Json daemon_error(int code)
{
    const daemons::CmeErrorText *known = daemons::find_cme_error(code);
    return {{"code", code}, {"name", known != nullptr ? Json(known->name) : Json()}};
}

void check_at(const char *name, int result)
{
    switch (result) {
    case CMIF_OK:
        return;
    case CMIF_NO_QUEUE:
        throw Failure(Exit::not_ready, message(name, "the request queue can't be looked up"),
                      "Start the AT daemon.");
    case CMIF_NO_REPLY_QUEUE:
        throw Failure(Exit::not_ready, message(name, "the reply queue can't be looked up"),
                      "Start the AT daemon.");
    case CMIF_SEND_FAILED:
        throw Failure(Exit::other, message(name, "the request could not be sent"),
                      "Check that the AT daemon is running and try again.");
    default:
        throw Failure(Exit::refused,
                      message(name, "the AT daemon refused: " + daemon_error_text(result)),
                      daemon_error_hint(result), {{"daemon", daemon_error(result)}});
    }
}

void check_qmi(const char *name, int result)
{
    switch (result) {
    case CMIF_OK:
        return;
    case CMIF_NOT_READY:
        throw Failure(Exit::not_ready, message(name, "the QMI daemon is not ready"),
                      "Start it, or wait until " CMIF_QMI_READY_FILE " begins with \"on\".");
    case CMIF_NO_QUEUE:
        throw Failure(Exit::not_ready, message(name, "a queue can't be looked up"),
                      "Start the QMI daemon.");
    case CMIF_SEND_FAILED:
        throw Failure(Exit::other, message(name, "the request could not be sent"),
                      "Check that the QMI daemon is running and try again.");
    case CMIF_RECEIVE_FAILED:
        throw Failure(Exit::other, message(name, "the answer could not be received"),
                      "The reply queue was removed during the call; try again.");
    case CMIF_INVALID:
        throw Failure(Exit::invalid, message(name, "no access point name (APN) is set"),
                      "Set one with 'cmifctl data profile set --apn NAME'.");
    case CMIF_NO_FILE:
        throw Failure(Exit::no_file, message(name, "the file is missing"));
    case CMIF_PROFILE_BUSY:
        throw Failure(Exit::profile_busy, message(name, "a profile change is in progress"),
                      "Try again in a few seconds; 'cmifctl status' shows the rest.");
    default:
        throw Failure(Exit::other, message(name, "unexpected result " + std::to_string(result)),
                      "'cmifctl status' shows the current state.");
    }
}

} // namespace client
