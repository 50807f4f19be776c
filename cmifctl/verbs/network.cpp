#include "client/result.h"
#include "cmif/cmif.h"
#include "cmifctl/output/terminal.h"
#include "cmifctl/output/text.h"
#include "readings.h"
#include "verbs.h"

#include <chrono>
#include <cstring>
#include <vector>

namespace cmifctl
{

namespace
{

constexpr std::size_t most_providers = 512; // more than the library ever writes

Json text_or_null(const char *text)
{
    return *text != '\0' ? Json(text) : Json();
}

Json provider(const cmif_provider_info &info)
{
    return {{"code", text_or_null(info.oper_numeric)},
            {"name", text_or_null(info.oper_long)},
            {"short_name", text_or_null(info.oper_short)},
            {"status", enumeration(names::provider_state, info.stat)},
            {"technology", enumeration(names::provider_technology, info.act)}};
}

// Trailing groups of the modem's answer (ranges of numbers) name nobody and are left out.
int read_providers(Json &output)
{
    std::vector<cmif_provider_info> list(most_providers);
    const int result = shared_CMIF_GetNetworkProviderList(list.data());
    output = Json::array();
    for (const cmif_provider_info &info : list)
        if (*info.oper_numeric != '\0' || *info.oper_long != '\0' || *info.oper_short != '\0')
            output.push_back(provider(info));
    return result;
}

Answer providers(const Invocation &run)
{
    return call(run.options, {.request = no_request("shared_CMIF_GetNetworkProviderList"),
                              .body = read_providers});
}

void report_providers(Invocation &run)
{
    Answer answer = providers(run);
    if (answer.result != CMIF_OK)
        throw Failure(Exit::no_file, "there is no provider list (" CMIF_PROVIDER_LIST_FILE ")",
                      "Search for operators first: cmifctl network scan");
    run.report.table({"providers",
                      {{"code", "CODE"},
                       {"status", "STATUS"},
                       {"technology", "TECHNOLOGY"},
                       {"short_name", "SHORT"},
                       {"name", "NAME"}},
                      std::move(answer.output)});
}

} // namespace

void network_show(Invocation &run)
{
    report_readings(run, {"network", "last_known"});
}

void network_scan(Invocation &run)
{
    const auto started = std::chrono::steady_clock::now();
    ask_at(run, {.request = at_request("shared_CMIF_set_ModeManualSearch", 24),
                 .body = [](Json &) { return shared_CMIF_set_ModeManualSearch(); },
                 .timeout = scan_timeout,
                 .waiting =
                     [started] {
                         const auto passed = std::chrono::steady_clock::now() - started;
                         const auto seconds =
                             std::chrono::duration_cast<std::chrono::seconds>(passed).count();
                         progress("searching for operators, " + std::to_string(seconds) + " s");
                     }});
    end_progress();
    report_providers(run);
}

void network_scan_state(Invocation &run)
{
    const Answer answer =
        try_at(run, {.request = at_request("shared_CMIF_get_ModeManualSearch", 23),
                     .body = [](Json &) { return shared_CMIF_get_ModeManualSearch(); }});
    const Refusal *known = refusal(answer.result);
    const Json name = answer.result == CMIF_OK ? Json("idle")
                      : known != nullptr       ? Json(known->name)
                                               : Json();
    run.report.field("search", {"state", {{"code", answer.result}, {"name", name}}});
}

void network_list(Invocation &run)
{
    report_providers(run);
}

void network_select(Invocation &run)
{
    const std::string code = run.arguments.text("code");
    if (!digits(code, 5, 6))
        throw Failure(Exit::usage, "CODE takes 5 or 6 digits, not '" + code + "'",
                      "MCC and MNC, as 'cmifctl network list' shows them.");
    const std::string technology =
        run.arguments.has("technology")
            ? std::to_string(run.arguments.code("technology", names::generation))
            : ""; // any
    ask_at(run, {.request = at_request("shared_CMIF_SetNetworkProvider", 17,
                                       {.first = code, .second = technology}),
                 .body =
                     [&code, &technology](Json &) {
                         return shared_CMIF_SetNetworkProvider(code.c_str(), technology.c_str());
                     },
                 .timeout = scan_timeout});
    run.report.field("network", {"selection_requested", enumeration(names::selection, 2)});
    run.report.field("network", {"operator_code", code});
}

void network_auto(Invocation &run)
{
    constexpr int automatic = 1;
    ask_at(run, {.request = at_request("shared_CMIF_SetNetworkMode", 3, {.value = "0"}),
                 .body = [](Json &) { return shared_CMIF_SetNetworkMode(automatic); },
                 .timeout = scan_timeout});
    run.report.field("network", {"selection_requested", enumeration(names::selection, automatic)});
}

void network_format(Invocation &run)
{
    const int format = run.arguments.code("format", names::name_format);
    ask_at(run, {.request = at_request("shared_Set_Operator_Selection_switch_format", 16,
                                       {.value = std::to_string(format)}),
                 .body = [format](Json &) {
                     return shared_Set_Operator_Selection_switch_format(format);
                 }});
    run.report.field("network", {"format_requested", enumeration(names::name_format, format)});
}

} // namespace cmifctl
