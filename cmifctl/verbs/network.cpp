#include "client/result.h"
#include "cmif/cmif.h"
#include "cmifctl/calls.h"
#include "cmifctl/output/terminal.h"
#include "daemons/cme_error.h"
#include "daemons/digits.h"
#include "providers.h"
#include "readings.h"
#include "registration.h"
#include "store.h"
#include "verbs.h"

#include <chrono>

namespace cmifctl
{
namespace
{

void show_search_progress(std::chrono::steady_clock::time_point started)
{
    const auto passed = std::chrono::steady_clock::now() - started;
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(passed).count();
    show_progress("searching for operators, " + std::to_string(seconds) + " s");
}

void check_operator_code(const std::string &code)
{
    if (!daemons::is_plmn_code(code))
        throw Failure(Exit::usage, "invalid CODE '" + code + "'",
                      "MCC and MNC, 5 or 6 digits, as 'cmifctl network list' shows them.");
}

} // namespace

void network_show(Context &context)
{
    report_readings(context, {"network", "last_known"});
}

void network_scan(Context &context)
{
    const auto started = std::chrono::steady_clock::now();
    at_call(context, {.request = at_request("shared_CMIF_set_ModeManualSearch", CMIF_AT_SEARCH),
                      .body = [](Json &) { return shared_CMIF_set_ModeManualSearch(); },
                      .timeout = search_timeout,
                      .on_wait = [started] { show_search_progress(started); }});
    clear_progress();
    report_providers(context);
}

void network_scan_state(Context &context)
{
    const int result =
        at_call_raw(context, {.request = at_request("shared_CMIF_get_ModeManualSearch",
                                                    CMIF_AT_GET_SEARCH_STATE),
                              .body = [](Json &) { return shared_CMIF_get_ModeManualSearch(); }})
            .result;
    const daemons::CmeErrorText *known = daemons::find_cme_error(result);
    Json state = client::daemon_error(result);
    if (result == CMIF_OK)
        state["name"] = "idle";
    const std::string text = known == nullptr ? std::to_string(result) : known->text;
    context.report.field(
        "search", {.key = "state", .value = state, .text = result == CMIF_OK ? "idle" : text});
}

void network_list(Context &context)
{
    report_providers(context);
}

void network_select(Context &context)
{
    const std::string code = context.arguments.text("code");
    check_operator_code(code);
    Json technology; // any
    if (context.arguments.has("technology"))
        technology = context.arguments.code("technology", enums::selectable_technology);
    const bool waits = !context.arguments.has("no-wait");
    const auto started = std::chrono::steady_clock::now();
    const Body select = [&code, &technology](Json &) {
        const std::string number = technology.is_null() ? "" : technology.dump();
        return shared_CMIF_SetNetworkProvider(code.c_str(), number.c_str());
    };
    at_call(context,
            {.request = at_request("shared_CMIF_SetNetworkProvider", CMIF_AT_SELECT_OPERATOR),
             .body = waits ? in_daemons_store(select) : select,
             .timeout = search_timeout});
    constexpr int manual = 2;
    context.report.field("requested", coded("selection", enums::selection, manual));
    context.report.field("requested", {"operator_code", code});
    context.report.field("requested", coded("technology", enums::technology, technology));
    if (!waits)
        return context.report.result("accepted", "The modem has accepted the request.");
    wait_for_registration(context, {code, technology}, started);
    context.report.result("registered", "The modem is registered.");
    report_readings(context, {"network"});
}

void network_auto(Context &context)
{
    constexpr int automatic = 1;
    at_call(context,
            {.request = at_request("shared_CMIF_SetNetworkMode", CMIF_AT_SELECT_AUTOMATICALLY),
             .body = [](Json &) { return shared_CMIF_SetNetworkMode(automatic); },
             .timeout = search_timeout});
    context.report.field("requested", coded("selection", enums::selection, automatic));
}

void network_format(Context &context)
{
    const int format = context.arguments.code("format", enums::name_format);
    at_call(context, {.request = at_request("shared_Set_Operator_Selection_switch_format",
                                            CMIF_AT_SET_OPERATOR_FORMAT),
                      .body = [format](Json &) {
                          return shared_Set_Operator_Selection_switch_format(format);
                      }});
    context.report.field("requested", coded("name_format", enums::name_format, format));
}

} // namespace cmifctl
