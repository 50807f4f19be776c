#include "cmif/cmif.h"
#include "cmifctl/output/terminal.h"
#include "readings.h"
#include "verbs.h"

namespace cmifctl
{

namespace
{

// Shows the setting when no value is given; otherwise asks the daemon for the value and reports
// what was asked for.
struct Setting {
    const char *key;
    Names names;
    int (*change)(int);
    Request (*request)(int code);
};

template <class Show>
void show_or_change(Invocation &run, const Setting &setting, Show show)
{
    if (!run.arguments.has(setting.key))
        return show();
    const int code = run.arguments.code(setting.key, setting.names);
    ask_at(run, {.request = setting.request(code),
                 .body = [&setting, code](Json &) { return setting.change(code); }});
    run.report.field("radio",
                     {std::string(setting.key) + "_requested", enumeration(setting.names, code)});
}

std::string region_value(int region)
{
    return region == 1 ? "0" : std::to_string(region);
}

std::string roaming_value(int mode)
{
    constexpr const char *values[]{"255", "2", "1"};
    return values[mode];
}

} // namespace

void radio_show(Invocation &run)
{
    report_readings(run, {"radio"});
}

void radio_mode(Invocation &run)
{
    show_or_change(run,
                   {"mode", names::settable_search_mode, shared_CMIF_set_mobileNetworkMode,
                    [](int mode) {
                        return at_request("shared_CMIF_set_mobileNetworkMode", 2,
                                          {.value = std::to_string(mode)});
                    }},
                   [&run] { report_readings(run, {"radio"}); });
}

void radio_band(Invocation &run)
{
    show_or_change(run,
                   {"region", names::settable_band_region, shared_CMIF_SetBandRegion,
                    [](int region) {
                        return at_request("shared_CMIF_SetBandRegion", 2,
                                          {.value = region_value(region)});
                    }},
                   [&run] { report_readings(run, {"radio"}); });
}

void radio_roaming(Invocation &run)
{
    show_or_change(run,
                   {"roaming", names::roaming, shared_CMIF_set_mobileInternationalRoam,
                    [](int mode) {
                        return at_request("shared_CMIF_set_mobileInternationalRoam", 15,
                                          {.value = roaming_value(mode)});
                    }},
                   [&run] { report_readings(run, {"radio"}); });
}

void radio_domain(Invocation &run)
{
    show_or_change(run,
                   {"domain", names::on_off, shared_CMIF_set_DomainServiceStatus,
                    [](int status) {
                        return at_request("shared_CMIF_set_DomainServiceStatus", 7,
                                          {.value = std::to_string(status)});
                    }},
                   [&run] {
                       const Json domain = ask_at(
                           run, {.request = at_request("shared_CMIF_get_DomainServiceStatus", 6),
                                 .body = [](Json &output) {
                                     return read_text(output, shared_CMIF_get_DomainServiceStatus);
                                 }});
                       run.report.field("radio", {"domain", named(names::on_off, domain)});
                   });
}

void radio_functionality(Invocation &run)
{
    const int mode = run.arguments.code("level", names::functionality);
    ask_at(run, {.request = at_request("shared_CMIF_set_phone_functionality", 22,
                                       {.first = std::string(1, static_cast<char>(mode))}),
                 .body = [mode](Json &) { return shared_CMIF_set_phone_functionality(mode); }});
    run.report.field("radio", {"functionality_requested", enumeration(names::functionality, mode)});
}

void radio_reset(Invocation &run)
{
    confirm(run, "This puts the modem back to its factory settings");
    ask_plain(run, "shared_CMIF_set_FactoryReset", 21, shared_CMIF_set_FactoryReset);
    run.report.field("radio", {"result", "the modem is back to its factory settings"});
}

void radio_timezone(Invocation &run)
{
    ask_plain(run, "shared_CMIF_set_timezone", 1, shared_CMIF_set_timezone);
    run.report.field("radio", {"result", "the modem has the system's time zone"});
}

void radio_download_mode(Invocation &run)
{
    confirm(run, "This asks the modem for its firmware-download mode: it is no phone until new "
                 "firmware is loaded or it is switched off");
    ask_plain(run, "shared_CMIF_set_AT_qfirehose", 20, shared_CMIF_set_AT_qfirehose);
    run.report.field("radio", {"result", "the request is sent; no answer is awaited"});
}

} // namespace cmifctl
