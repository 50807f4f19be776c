#include "cmif/cmif.h"
#include "cmifctl/calls.h"
#include "daemons/digits.h"
#include "pin_attempts.h"
#include "qmi_readings.h"
#include "readings.h"
#include "sim_snapshot.h"
#include "store.h"
#include "verbs.h"

namespace cmifctl
{
namespace
{

using Secrets = std::vector<std::string>;

void show_pin_mode(Context &context)
{
    const Json mode = at_reading(
        context,
        {.request = at_request("shared_CMIF_get_mobileSimPINMode", CMIF_AT_GET_PIN_MODE),
         .body = [](Json &output) { return read_text(output, shared_CMIF_get_mobileSimPINMode); }});
    context.report.field("sim", coded("pin_mode", enums::on_off, mode));
}

std::string ask_control_key(const Context &context)
{
    return ask_for({control_key_form}, context.arguments.has("source")).front();
}

} // namespace

void sim_status(Context &context)
{
    report_readings(context, {"sim"});
    report_qmi_readings(context, {"state"});
}

void sim_retries(Context &context)
{
    const Json counters = inspect_sim(context).counters;
    bool any = false;
    for (const auto &[counter, left] : counters.items()) {
        context.report.field("retries", {counter, left});
        any = any || !left.is_null();
    }
    if (!any)
        throw Failure(Exit::other, "the retry counters are not known", unknown_counters_hint);
}

void sim_enter_pin(Context &context)
{
    make_attempt(context,
                 {.counter = "pin1",
                  .secret = "PIN",
                  .asked_when = "SIM PIN",
                  .secrets = {pin_form},
                  .request = at_request("shared_CMIF_set_EntermobilePIN", CMIF_AT_ENTER_PIN),
                  .call =
                      [](const Secrets &secrets) {
                          return shared_CMIF_set_EntermobilePIN(secrets[0].c_str());
                      },
                  .result = "accepted",
                  .done = "The PIN is accepted."});
}

void sim_enter_puk(Context &context)
{
    make_attempt(context,
                 {.counter = "puk1",
                  .secret = "PUK",
                  .asked_when = "",
                  .secrets = {puk_form, new_pin_form},
                  .request = at_request("shared_CMIF_set_EntermobilePINPUK", CMIF_AT_ENTER_PUK),
                  .call =
                      [](const Secrets &secrets) {
                          return shared_CMIF_set_EntermobilePINPUK(secrets[0].c_str(),
                                                                   secrets[1].c_str());
                      },
                  .result = "unblocked",
                  .done = "The SIM is unblocked and has the new PIN."});
}

void sim_change_pin(Context &context)
{
    make_attempt(context,
                 {.counter = "pin1",
                  .secret = "PIN",
                  .asked_when = "",
                  .secrets = {pin_form, new_pin_form},
                  .request = at_request("shared_CMIF_set_ChangemobileSimPIN", CMIF_AT_CHANGE_PIN),
                  .call =
                      [](const Secrets &secrets) {
                          return shared_CMIF_set_ChangemobileSimPIN(secrets[0].c_str(),
                                                                    secrets[1].c_str());
                      },
                  .result = "changed",
                  .done = "The PIN is changed."});
}

void sim_pin_mode(Context &context)
{
    if (!context.arguments.has("mode"))
        return show_pin_mode(context);
    const bool on = context.arguments.code("mode", enums::on_off) == 1;
    make_attempt(context,
                 {.counter = "pin1",
                  .secret = "PIN",
                  .asked_when = "",
                  .secrets = {pin_form},
                  .request = at_request("shared_CMIF_set_mobileSimPINMode", CMIF_AT_SET_PIN_MODE),
                  .call =
                      [on](const Secrets &secrets) {
                          return shared_CMIF_set_mobileSimPINMode(on ? "1" : "0",
                                                                  secrets[0].c_str());
                      },
                  .result = on ? "enabled" : "disabled",
                  .done = on ? "The SIM asks for its PIN." : "The SIM does not ask for its PIN."});
}

void sim_lock_network(Context &context)
{
    const std::string facility = context.arguments.given("facility").value_or("PN");
    const std::string network = context.arguments.text("network");
    if (!network.empty() && !daemons::is_plmn_code(network))
        throw Failure(Exit::usage, "invalid --network",
                      "MCC and MNC, 5 or 6 digits, for example 00101.");
    check_length("facility", facility, sizeof cmif_msg::set_value - 1);
    const std::string key = ask_control_key(context);
    at_call(context, {.request = at_request("shared_CMIF_set_NetworkPersonalizationLock",
                                            CMIF_AT_LOCK_NETWORK),
                      .body =
                          [&](Json &) {
                              return shared_CMIF_set_NetworkPersonalizationLock(
                                  facility.c_str(), "1", network.c_str(), key.c_str());
                          },
                      .secret = true});
    context.report.result("locked",
                          "The modem is locked to " +
                              (network.empty() ? "the SIM's own network." : network + "."));
}

void sim_unlock_network(Context &context)
{
    const std::string key = ask_control_key(context);
    at_call(context, {.request = at_request("shared_CMIF_set_NetworkPersonalizationUNLock",
                                            CMIF_AT_UNLOCK_NETWORK),
                      .body =
                          [&key](Json &) {
                              return shared_CMIF_set_NetworkPersonalizationUNLock(key.c_str());
                          },
                      .secret = true});
    context.report.result("unlocked", "The modem works with the SIM of any network.");
}

} // namespace cmifctl
