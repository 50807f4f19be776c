#include "result.h"

#include "cmif/cmif.h"

#include <algorithm>
#include <iterator>

namespace cmifctl
{

namespace
{

constexpr Refusal refusals[]{
    {4, "operation not supported", ""},
    {5, "SIM PIN required by the phone", ""},
    {10, "SIM not inserted", "Insert a SIM, then see 'cmifctl sim status'."},
    {11, "SIM PIN required", "Enter it with 'cmifctl sim enter-pin'."},
    {12, "SIM PUK required", "The PIN is blocked: unblock it with 'cmifctl sim enter-puk'."},
    {13, "SIM failure", "A SIM whose PUK is used up is lost; ask the operator for another."},
    {14, "SIM busy", "The SIM is still starting; try again in a few seconds."},
    {15, "SIM wrong", ""},
    {16, "incorrect password", "See the tries that are left with 'cmifctl sim retries'."},
    {17, "SIM PIN2 required", ""},
    {18, "SIM PUK2 required", ""},
    {20, "memory full", "Delete messages with 'cmifctl sms delete'."},
    {21, "invalid index", "See the indexes with 'cmifctl sms list'."},
    {22, "not found", ""},
    {24, "text string too long", ""},
    {25, "invalid characters in text string", ""},
    {26, "dial string too long", ""},
    {27, "invalid characters in dial string", ""},
    {30, "no network service", "See the registration with 'cmifctl network show'."},
    {31, "network timeout", "Try again."},
    {32, "network not allowed, emergency calls only",
     "Choose another operator with 'cmifctl network select', or 'cmifctl network auto'."},
    {40, "network personalization PIN required",
     "Give the control key with 'cmifctl sim unlock-network'."},
    {41, "network personalization PUK required", ""},
    {50, "incorrect parameters", ""},
    {100, "unknown", ""},
    {127, "missing access point name", "Set one with 'cmifctl data profile set --apn NAME'."},
    {203, "operation not allowed", "See the state of things with 'cmifctl status'."},
    {204, "operation not supported", ""},
    {220, "file not written", "Check the room that is left in /tmp."},
    {221, "search running", "Wait for its end; 'cmifctl network scan-state' shows it."},
};

constexpr const char *see_status = "See what works with 'cmifctl status'.";

std::string called(const char *name, const std::string &what)
{
    return std::string(name) + ": " + what;
}

} // namespace

const Refusal *refusal(int code)
{
    const auto *const found =
        std::find_if(std::begin(refusals), std::end(refusals),
                     [code](const Refusal &refusal) { return refusal.code == code; });
    return found == std::end(refusals) ? nullptr : found;
}

std::string refusal_text(int code)
{
    const Refusal *known = refusal(code);
    return std::string(known != nullptr ? known->name : "code") +
           (known != nullptr ? " (" + std::to_string(code) + ")" : " " + std::to_string(code));
}

bool channel_failed(int result)
{
    return result == CMIF_NO_REPLY_QUEUE || result == CMIF_NO_QUEUE || result == CMIF_SEND_FAILED;
}

void check_at(const char *name, int result)
{
    switch (result) {
    case CMIF_OK:
        return;
    case CMIF_NO_QUEUE:
        throw Failure(Exit::not_ready, called(name, "the request queue can't be looked up"),
                      "Start the AT daemon.");
    case CMIF_NO_REPLY_QUEUE:
        throw Failure(Exit::not_ready, called(name, "the reply queue can't be looked up"),
                      "Start the AT daemon.");
    case CMIF_SEND_FAILED:
        throw Failure(Exit::other, called(name, "the request could not be sent"),
                      "Check that the AT daemon runs, then try again.");
    default:
        break;
    }
    const Refusal *known = refusal(result);
    throw Failure(
        Exit::refused, called(name, "the AT daemon refused: " + refusal_text(result)),
        known != nullptr ? known->hint : "",
        {{"daemon", {{"code", result}, {"name", known != nullptr ? Json(known->name) : Json()}}}});
}

void check_qmi(const char *name, int result)
{
    switch (result) {
    case CMIF_OK:
        return;
    case CMIF_NOT_READY:
        throw Failure(Exit::not_ready, called(name, "the QMI daemon is not ready"),
                      "Start it, or wait for it: " CMIF_QMI_READY_FILE
                      " begins with \"on\" when it is.");
    case CMIF_NO_QUEUE:
        throw Failure(Exit::not_ready, called(name, "a queue can't be looked up"),
                      "Start the QMI daemon.");
    case CMIF_SEND_FAILED:
        throw Failure(Exit::other, called(name, "the request could not be sent"),
                      "Check that the QMI daemon runs, then try again.");
    case CMIF_RECEIVE_FAILED:
        throw Failure(Exit::other, called(name, "the answer could not be received"),
                      "The reply queue was removed meanwhile; try again.");
    case CMIF_INVALID:
        throw Failure(Exit::invalid, called(name, "no access point name (APN) is set"),
                      "Set one with 'cmifctl data profile set --apn NAME'.");
    case CMIF_NO_FILE:
        throw Failure(Exit::no_file, called(name, "the file is missing"));
    case CMIF_PROFILE_BUSY:
        throw Failure(Exit::profile_busy, called(name, "a profile change is in progress"),
                      "Try again in a few seconds; 'cmifctl status' shows the rest.");
    default:
        throw Failure(Exit::other, called(name, "result " + std::to_string(result)), see_status);
    }
}

} // namespace cmifctl
