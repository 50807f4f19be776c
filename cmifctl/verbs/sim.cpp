#include "cmif/cmif.h"
#include "cmifctl/output/terminal.h"
#include "cmifctl/output/text.h"
#include "pin_attempts.h"
#include "qmi_readings.h"
#include "readings.h"
#include "verbs.h"

namespace cmifctl
{

namespace
{

std::vector<std::string> secrets(const Invocation &run, const std::vector<Question> &questions)
{
    return ask_secrets(questions, run.arguments.has("source"));
}

void check_digits(const std::string &text, const char *secret, std::size_t least, std::size_t most)
{
    if (digits(text, least, most))
        return;
    const std::string range = least == most ? std::to_string(least)
                                            : std::to_string(least) + " to " + std::to_string(most);
    throw Failure(Exit::invalid, std::string("that is no ") + secret + ", nothing was sent",
                  std::string("A ") + secret + " has " + range + " digits and nothing else.");
}

void check_pin(const std::string &text, const char *secret = "PIN")
{
    check_digits(text, secret, 4, 8);
}

void check_control_key(const std::string &text)
{
    check_digits(text, "control key", 1, 29);
}

// A request with secrets in it, whose body needs nothing but the texts.
template <class Function>
Call secret_call(const Request &request, Function function)
{
    return {.request = request, .body = [function](Json &) { return function(); }, .secret = true};
}

} // namespace

void sim_status(Invocation &run)
{
    report_readings(run, {"sim"});
    report_qmi_views(run, {"state"});
}

void sim_retries(Invocation &run)
{
    const Json counters = retry_counters(run);
    for (const auto &[counter, left] : counters.items())
        run.report.field("retries", {counter, left});
}

void sim_enter_pin(Invocation &run)
{
    const Json before = require_tries(run, "pin1", "PIN");
    const std::string pin = secrets(run, {{"PIN"}}).front();
    check_pin(pin);
    attempt(run, before,
            {"pin1", "PIN", "the PIN is accepted",
             secret_call(at_request("shared_CMIF_set_EntermobilePIN", 12, {.first = pin}),
                         [pin] { return shared_CMIF_set_EntermobilePIN(pin.c_str()); })});
}

void sim_enter_puk(Invocation &run)
{
    const Json before = require_tries(run, "puk1", "PUK");
    const auto given = secrets(run, {{"PUK"}, {"new PIN", true}});
    const std::string &puk = given[0];
    const std::string &pin = given[1];
    check_digits(puk, "PUK", 8, 8);
    check_pin(pin, "new PIN");
    attempt(
        run, before,
        {"puk1", "PUK", "the SIM is unblocked and has the new PIN",
         secret_call(
             at_request("shared_CMIF_set_EntermobilePINPUK", 14, {.first = puk, .second = pin}),
             [puk, pin] { return shared_CMIF_set_EntermobilePINPUK(puk.c_str(), pin.c_str()); })});
}

void sim_change_pin(Invocation &run)
{
    const Json before = require_tries(run, "pin1", "PIN");
    const auto given = secrets(run, {{"PIN"}, {"new PIN", true}});
    const std::string &old_pin = given[0];
    const std::string &new_pin = given[1];
    check_pin(old_pin);
    check_pin(new_pin, "new PIN");
    attempt(run, before,
            {"pin1", "PIN", "the PIN is changed",
             secret_call(at_request("shared_CMIF_set_ChangemobileSimPIN", 13,
                                    {.first = old_pin, .second = new_pin}),
                         [old_pin, new_pin] {
                             return shared_CMIF_set_ChangemobileSimPIN(old_pin.c_str(),
                                                                       new_pin.c_str());
                         })});
}

void sim_pin_mode(Invocation &run)
{
    if (!run.arguments.has("mode")) {
        const Json mode =
            ask_at(run, {.request = at_request("shared_CMIF_get_mobileSimPINMode", 8),
                         .body = [](Json &output) {
                             return read_text(output, shared_CMIF_get_mobileSimPINMode);
                         }});
        run.report.field("sim", {"pin_mode", named(names::on_off, mode)});
        return;
    }
    const Json before = require_tries(run, "pin1", "PIN");
    const bool on = run.arguments.code("mode", names::on_off) == 1;
    const std::string mode = on ? "1" : "0";
    const std::string pin = secrets(run, {{"PIN"}}).front();
    check_pin(pin);
    attempt(
        run, before,
        {"pin1", "PIN", on ? "the SIM asks for its PIN" : "the SIM does not ask for its PIN",
         secret_call(
             at_request("shared_CMIF_set_mobileSimPINMode", 9, {.first = mode, .second = pin}),
             [mode, pin] { return shared_CMIF_set_mobileSimPINMode(mode.c_str(), pin.c_str()); })});
}

void sim_lock_network(Invocation &run)
{
    const std::string facility = run.arguments.given("facility").value_or("PN");
    const std::string network = run.arguments.text("network");
    if (!network.empty() && !digits(network, 5, 6))
        throw Failure(Exit::usage, "--network takes 5 or 6 digits",
                      "MCC and MNC, for example 00101.");
    const std::string key = secrets(run, {{"control key"}}).front();
    check_control_key(key);
    ask_at(run, secret_call(
                    at_request("shared_CMIF_set_NetworkPersonalizationLock", 10,
                               {.first = "1", .second = network, .third = key, .value = facility}),
                    [=] {
                        return shared_CMIF_set_NetworkPersonalizationLock(
                            facility.c_str(), "1", network.c_str(), key.c_str());
                    }));
    run.report.field("sim", {"result", "the modem is locked to " +
                                           (network.empty() ? "the SIM's own network" : network)});
}

void sim_unlock_network(Invocation &run)
{
    const std::string key = secrets(run, {{"control key"}}).front();
    check_control_key(key);
    ask_at(run, secret_call(
                    at_request("shared_CMIF_set_NetworkPersonalizationUNLock", 11, {.first = key}),
                    [key] { return shared_CMIF_set_NetworkPersonalizationUNLock(key.c_str()); }));
    run.report.field("sim", {"result", "the modem works with the SIMs of any network"});
}

} // namespace cmifctl
