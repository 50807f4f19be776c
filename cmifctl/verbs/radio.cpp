#include "cmif/cmif.h"
#include "cmifctl/calls.h"
#include "cmifctl/input/questions.h"
#include "readings.h"
#include "store.h"
#include "verbs.h"

namespace cmifctl
{
namespace
{

// A setting of the modem: the argument's name, the name and codes under which it is shown, and the
// request that changes it.
struct Setting {
    const char *argument;
    const char *key;
    EnumTable table;
    const char *function;
    int (*change)(int);
    cmif_at_code code;
};

// clang-format off
#define FUNCTION(name) #name, name
constexpr Setting mode_setting   {"mode",    "search_mode", enums::search_mode, FUNCTION(shared_CMIF_set_mobileNetworkMode),       CMIF_AT_SET_SEARCH_MODE};
constexpr Setting region_setting {"region",  "band_region", enums::band_region, FUNCTION(shared_CMIF_SetBandRegion),               CMIF_AT_SET_SEARCH_MODE};
constexpr Setting roaming_setting{"roaming", "roaming",     enums::roaming,     FUNCTION(shared_CMIF_set_mobileInternationalRoam), CMIF_AT_SET_ROAMING};
constexpr Setting domain_setting {"domain",  "packet_service", enums::packet_service, FUNCTION(shared_CMIF_set_DomainServiceStatus), CMIF_AT_SET_PACKET_DOMAIN};
#undef FUNCTION
// clang-format on

// Sends the value that was given, and reports what was asked for.
void change(Context &context, const Setting &setting)
{
    const int code = context.arguments.code(setting.argument, setting.table);
    at_call(context, {.request = at_request(setting.function, setting.code),
                      .body = [&setting, code](Json &) { return setting.change(code); }});
    context.report.field("requested", coded(setting.key, setting.table, code));
}

// For settings that the modem publishes.
void show_or_change(Context &context, const Setting &setting)
{
    if (context.arguments.has(setting.argument))
        return change(context, setting);
    report_readings(context, {"radio"});
}

} // namespace

void radio_show(Context &context)
{
    report_readings(context, {"radio"});
}

void radio_mode(Context &context)
{
    show_or_change(context, mode_setting);
}

void radio_band(Context &context)
{
    show_or_change(context, region_setting);
}

void radio_roaming(Context &context)
{
    show_or_change(context, roaming_setting);
}

void radio_domain(Context &context)
{
    if (context.arguments.has("domain"))
        return change(context, domain_setting);
    const Json domain = at_reading(
        context,
        {.request = at_request("shared_CMIF_get_DomainServiceStatus", CMIF_AT_GET_PACKET_DOMAIN),
         .body = [](Json &output) {
             return read_text(output, shared_CMIF_get_DomainServiceStatus);
         }});
    context.report.field("radio", coded("packet_service", enums::packet_service, domain));
}

void radio_functionality(Context &context)
{
    const int level = context.arguments.code("level", enums::functionality);
    at_call(
        context,
        {.request = at_request("shared_CMIF_set_phone_functionality", CMIF_AT_SET_FUNCTIONALITY),
         .body = [level](Json &) { return shared_CMIF_set_phone_functionality(level); }});
    context.report.field("requested", coded("functionality", enums::functionality, level));
}

void radio_reset(Context &context)
{
    confirm(context,
            "This resets the modem to its factory settings, ends the connection, deletes all "
            "messages and locks the SIM until its PIN is entered");
    at_command(context, "shared_CMIF_set_FactoryReset", CMIF_AT_FACTORY_RESET,
               shared_CMIF_set_FactoryReset);
    context.report.result("reset", "The modem was reset to its factory settings.");
}

void radio_timezone(Context &context)
{
    at_command(context, "shared_CMIF_set_timezone", CMIF_AT_SET_TIME_ZONE,
               shared_CMIF_set_timezone);
    context.report.result("done", "The modem has the system's time zone.");
}

void radio_download_mode(Context &context)
{
    confirm(context, download_warning);
    at_command(context, "shared_CMIF_set_AT_qfirehose", CMIF_AT_DOWNLOAD_MODE,
               shared_CMIF_set_AT_qfirehose);
    context.report.result("sent", "The request was sent; no reply is expected.");
}

} // namespace cmifctl
