#include "result.h"

#include "cmif/cmif.h"
#include "daemons/cme_error.h"
#include "json.h"

namespace client
{
namespace
{

using daemons::CmeError;

struct Hint {
    CmeError error;
    const char *text;
    const char *function = ""; // the name that the request's function begins with; "" for any
};

// Of several for one error, the first that fits.
// clang-format off
constexpr const char *key_attempts = "The modem allows few wrong control keys and does not tell how many are left; get the key from the modem's seller before the next attempt.";
constexpr Hint hints[] = {
    {CmeError::sim_not_inserted,     "Insert a SIM, then see 'cmifctl sim status'."},
    {CmeError::sim_pin_required,     "Enter it with 'cmifctl sim enter-pin'."},
    {CmeError::phone_pin_required,   "Enter it with 'cmifctl sim enter-pin'."},
    {CmeError::sim_puk_required,     "The PIN is blocked: unblock it with 'cmifctl sim enter-puk'."},
    {CmeError::sim_failure,          "The SIM is defective, or its PUK is used up: ask the operator for another."},
    {CmeError::sim_wrong,            "The modem does not accept this SIM: insert another one."},
    {CmeError::sim_busy,             "The SIM is still starting; try again in a few seconds."},
    {CmeError::incorrect_password,   key_attempts, "shared_CMIF_set_NetworkPersonalization"},
    {CmeError::incorrect_password,   "See the attempts left with 'cmifctl sim retries'."},
    {CmeError::memory_full,          "Delete messages with 'cmifctl sms delete'."},
    {CmeError::invalid_index,        "See the indexes with 'cmifctl sms list'."},
    {CmeError::not_found,            "'cmifctl status' shows what there is."},
    {CmeError::no_network_service,   "No operator with this code can be reached, or not with this technology: 'cmifctl network scan' lists those that can.", "shared_CMIF_SetNetworkProvider"},
    {CmeError::no_network_service,   "See the registration with 'cmifctl network show'; 'cmifctl network auto' lets the modem choose an operator."},
    {CmeError::network_timeout,      "Try again; 'cmifctl radio show' shows the signal."},
    {CmeError::network_not_allowed,  "Choose another operator with 'cmifctl network select', or 'cmifctl network auto'."},
    {CmeError::network_pin_required, "The modem is locked to the SIMs of another network: insert one of those, or give the control key with 'cmifctl sim unlock-network'."},
    {CmeError::network_puk_required, "The control key is blocked; only the modem's seller can unblock it."},
    {CmeError::incorrect_parameters, "A control key has 8 to 16 digits.", "shared_CMIF_set_NetworkPersonalization"},
    {CmeError::incorrect_parameters, "The modem does not take these values."},
    {CmeError::missing_apn,          "Set one with 'cmifctl data profile set --apn NAME'."},
    {CmeError::no_connection_to_phone, "The daemon has no modem: check that it is plugged in and powered, then restart the daemon."},
    {CmeError::phone_failure,        "Restart the modem: 'cmifctl radio functionality minimum', then 'full'."},
    {CmeError::not_allowed,          "The modem is not locked, or no attempts at the control key are left; 'cmifctl sim status' shows the lock.", "shared_CMIF_set_NetworkPersonalizationUNLock"},
    {CmeError::not_allowed,          "No attempts at the control key are left; ask the modem's seller.", "shared_CMIF_set_NetworkPersonalizationLock"},
    {CmeError::not_allowed,          "The PIN can be changed only while the SIM asks for it: 'cmifctl sim pin-mode on'.", "shared_CMIF_set_ChangemobileSimPIN"},
    {CmeError::not_allowed,          "It is set so already; 'cmifctl sim pin-mode' shows it.", "shared_CMIF_set_mobileSimPINMode"},
    {CmeError::not_allowed,          "'cmifctl sim status' shows what the SIM asks for.", "shared_CMIF_set_Entermobile"},
    {CmeError::not_allowed,          "If the radio is off, which no reading shows, switch it on with 'cmifctl radio functionality full'."},
    {CmeError::not_supported,        "This modem, or its daemon, can't do it."},
    {CmeError::file_not_written,     "Check the free space in /tmp, and that " CMIF_PROVIDER_LIST_FILE " is a regular file."},
    {CmeError::search_running,       "Wait until it ends; 'cmifctl network scan-state' shows it."},
};
// clang-format on

std::string message(const char *name, const std::string &what)
{
    return std::string(name) + ": " + what;
}

[[noreturn]] void fail_refused(const char *name, int error)
{
    throw Failure(Exit::refused,
                  message(name, "the AT daemon refused: " + daemon_error_text(error)),
                  daemon_error_hint(error, name), {{"daemon", daemon_error(error)}});
}

} // namespace

std::string daemon_error_text(int code)
{
    const daemons::CmeErrorText *known = daemons::find_cme_error(code);
    if (known == nullptr)
        return "code " + std::to_string(code);
    return std::string(known->text) + " (" + std::to_string(code) + ")";
}

std::string daemon_error_hint(int code, std::string_view function)
{
    for (const Hint &hint : hints)
        if (static_cast<int>(hint.error) == code && function.starts_with(hint.function))
            return hint.text;
    return "";
}

Json daemon_error(int code)
{
    const daemons::CmeErrorText *known = daemons::find_cme_error(code);
    return {{"code", code}, {"name", known != nullptr ? Json(known->name) : Json()}};
}

void check_at(const char *name, int result, bool answered)
{
    if (result == CMIF_OK)
        return;
    if (answered)
        fail_refused(name, result);
    switch (result) {
    case CMIF_NO_QUEUE:
        throw Failure(Exit::not_ready, message(name, "the request queue can't be looked up"),
                      "Start the AT daemon; 'cmifctl doctor' shows the queues.");
    case CMIF_NO_REPLY_QUEUE:
        throw Failure(Exit::not_ready, message(name, "the reply queue can't be looked up"),
                      "Start the AT daemon; 'cmifctl doctor' shows the queues.");
    case CMIF_SEND_FAILED:
        throw Failure(Exit::other, message(name, "the request could not be sent"),
                      "'cmifctl doctor' shows what is wrong with the queue.");
    default:
        fail_refused(name, result);
    }
}

void check_qmi(const char *name, int result)
{
    switch (result) {
    case CMIF_OK:
        return;
    case CMIF_NOT_READY:
        throw Failure(Exit::not_ready, message(name, "the QMI daemon is not ready"),
                      "Start it, or wait until " CMIF_QMI_READY_FILE
                      " begins with \"on\"; 'cmifctl doctor' shows what it lacks.");
    case CMIF_NO_QUEUE:
        throw Failure(Exit::not_ready, message(name, "a queue can't be looked up"),
                      "Start the QMI daemon; 'cmifctl doctor' shows the queues.");
    case CMIF_SEND_FAILED:
        throw Failure(Exit::other, message(name, "the request could not be sent"),
                      "'cmifctl doctor' shows what is wrong with the queue.");
    case CMIF_RECEIVE_FAILED:
        throw Failure(
            Exit::other, message(name, "the answer could not be received"),
            "The reply is too long, or the reply queue was removed: 'cmifctl doctor' shows "
            "which.");
    case CMIF_INVALID:
        throw Failure(Exit::invalid, message(name, "no access point name (APN) is set"),
                      "Set one with 'cmifctl data profile set --apn NAME'.");
    case CMIF_NO_FILE:
        throw Failure(Exit::no_file, message(name, "the file is missing"));
    case CMIF_PROFILE_BUSY:
        throw Failure(
            Exit::profile_busy, message(name, "a profile change is in progress"),
            "Try again in a few seconds; 'cmifctl doctor' shows whether a process works on it.");
    default:
        throw Failure(Exit::other, message(name, "unexpected result " + std::to_string(result)),
                      "'cmifctl status' shows the current state.");
    }
}

} // namespace client
