#include "cmif/cmif.h"
#include "cmifctl/calls.h"
#include "cmifctl/input/questions.h"
#include "daemons/digits.h"
#include "pin_attempts.h"
#include "qmi_readings.h"
#include "readings.h"
#include "verbs.h"

namespace cmifctl
{
namespace
{

bool is_control_key(std::string_view text)
{
    return daemons::is_digits(text, 1, 29);
}

struct SecretForm {
    const char *name;
    bool (*valid)(std::string_view);
    const char *digits;
    bool twice = false;
};

constexpr SecretForm pin_form{"PIN", daemons::is_pin, "4 to 8 digits"};
constexpr SecretForm new_pin_form{"new PIN", daemons::is_pin, "4 to 8 digits", true};
constexpr SecretForm puk_form{"PUK", daemons::is_puk, "8 digits"};
constexpr SecretForm control_key_form{"control key", is_control_key, "1 to 29 digits"};

void check_secret(const std::string &text, const SecretForm &form)
{
    if (!form.valid(text))
        throw Failure(Exit::invalid, std::string("not a valid ") + form.name + "; nothing was sent",
                      std::string("A ") + form.name + " has " + form.digits + " and nothing else.");
}

// Asks for the secrets, then checks their form.
std::vector<std::string> ask(const Context &context, const std::vector<SecretForm> &forms)
{
    std::vector<Question> questions;
    questions.reserve(forms.size());
    for (const SecretForm &form : forms)
        questions.push_back({form.name, form.twice});
    std::vector<std::string> answers = ask_secrets(questions, context.arguments.has("source"));
    for (std::size_t i = 0; i < forms.size(); ++i)
        check_secret(answers[i], forms[i]);
    return answers;
}

// A request with secrets in it, and a function of the library that returns its result alone.
template <class Function>
Call secret_call(const Request &request, Function function)
{
    return {.request = request, .body = [function](Json &) { return function(); }, .secret = true};
}

void show_pin_mode(Context &context)
{
    const Json mode = at_call(
        context,
        {.request = at_request("shared_CMIF_get_mobileSimPINMode", CMIF_AT_GET_PIN_MODE),
         .body = [](Json &output) { return read_text(output, shared_CMIF_get_mobileSimPINMode); }});
    context.report.field("sim", {"pin_mode", named(enums::on_off, mode)});
}

} // namespace

void sim_status(Context &context)
{
    report_readings(context, {"sim"});
    report_qmi_readings(context, {"state"});
}

void sim_retries(Context &context)
{
    const Json counters = retry_counters(context);
    for (const auto &[counter, left] : counters.items())
        context.report.field("retries", {counter, left});
}

void sim_enter_pin(Context &context)
{
    const Json before = check_retry_counter(context, "pin1", "PIN");
    const std::string pin = ask(context, {pin_form}).front();
    make_attempt(context, before,
                 {"pin1", "PIN", "the PIN is accepted",
                  secret_call(at_request("shared_CMIF_set_EntermobilePIN", CMIF_AT_ENTER_PIN,
                                         {.first = pin}),
                              [pin] { return shared_CMIF_set_EntermobilePIN(pin.c_str()); })});
}

void sim_enter_puk(Context &context)
{
    const Json before = check_retry_counter(context, "puk1", "PUK");
    const auto given = ask(context, {puk_form, new_pin_form});
    const std::string &puk = given[0];
    const std::string &pin = given[1];
    make_attempt(context, before,
                 {"puk1", "PUK", "the SIM is unblocked and has the new PIN",
                  secret_call(at_request("shared_CMIF_set_EntermobilePINPUK", CMIF_AT_ENTER_PUK,
                                         {.first = puk, .second = pin}),
                              [puk, pin] {
                                  return shared_CMIF_set_EntermobilePINPUK(puk.c_str(),
                                                                           pin.c_str());
                              })});
}

void sim_change_pin(Context &context)
{
    const Json before = check_retry_counter(context, "pin1", "PIN");
    const auto given = ask(context, {pin_form, new_pin_form});
    const std::string &old_pin = given[0];
    const std::string &new_pin = given[1];
    make_attempt(context, before,
                 {"pin1", "PIN", "the PIN is changed",
                  secret_call(at_request("shared_CMIF_set_ChangemobileSimPIN", CMIF_AT_CHANGE_PIN,
                                         {.first = old_pin, .second = new_pin}),
                              [old_pin, new_pin] {
                                  return shared_CMIF_set_ChangemobileSimPIN(old_pin.c_str(),
                                                                            new_pin.c_str());
                              })});
}

void sim_pin_mode(Context &context)
{
    if (!context.arguments.has("mode"))
        return show_pin_mode(context);
    const Json before = check_retry_counter(context, "pin1", "PIN");
    const bool on = context.arguments.code("mode", enums::on_off) == 1;
    const std::string mode = on ? "1" : "0";
    const std::string pin = ask(context, {pin_form}).front();
    make_attempt(
        context, before,
        {"pin1", "PIN", on ? "the SIM asks for its PIN" : "the SIM does not ask for its PIN",
         secret_call(
             at_request("shared_CMIF_set_mobileSimPINMode", CMIF_AT_SET_PIN_MODE,
                        {.first = mode, .second = pin}),
             [mode, pin] { return shared_CMIF_set_mobileSimPINMode(mode.c_str(), pin.c_str()); })});
}

void sim_lock_network(Context &context)
{
    const std::string facility = context.arguments.given("facility").value_or("PN");
    const std::string network = context.arguments.text("network");
    if (!network.empty() && !daemons::is_plmn_code(network))
        throw Failure(Exit::usage, "--network takes 5 or 6 digits",
                      "MCC and MNC, for example 00101.");
    const std::string key = ask(context, {control_key_form}).front();
    at_call(
        context,
        secret_call(at_request("shared_CMIF_set_NetworkPersonalizationLock", CMIF_AT_LOCK_NETWORK,
                               {.first = "1", .second = network, .third = key, .value = facility}),
                    [=] {
                        return shared_CMIF_set_NetworkPersonalizationLock(
                            facility.c_str(), "1", network.c_str(), key.c_str());
                    }));
    context.report.field("sim",
                         {"result", "the modem is locked to " +
                                        (network.empty() ? "the SIM's own network" : network)});
}

void sim_unlock_network(Context &context)
{
    const std::string key = ask(context, {control_key_form}).front();
    at_call(
        context,
        secret_call(at_request("shared_CMIF_set_NetworkPersonalizationUNLock",
                               CMIF_AT_UNLOCK_NETWORK, {.first = key}),
                    [key] { return shared_CMIF_set_NetworkPersonalizationUNLock(key.c_str()); }));
    context.report.field("sim", {"result", "the modem works with the SIM of any network"});
}

} // namespace cmifctl
