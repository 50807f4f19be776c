#include "readings.h"

#include "cmif/cmif.h"
#include "cmifctl/output/text.h"
#include "settings.h"

#include <algorithm>
#include <cstring>
#include <variant>

namespace cmifctl
{

namespace
{

using TextGetter = int (*)(char *);
using CodeGetter = int (*)(int *);

enum class Form { text, number, code, flag, seconds };

struct Reading {
    const char *section;
    const char *key;
    std::variant<TextGetter, CodeGetter> getter;
    Form form = Form::text;
    const char *unit = "";
    Names names{};
};

// The address as the numeric getter gives it, should it ever; as text otherwise.
int ipv4_address(char *out)
{
    if (shared_CMIF_get_mobileIPv4Address(out) == CMIF_OK)
        return CMIF_OK;
    return shared_CMIF_get_mobileIPv4_string(out);
}

int connection_uptime(char *out)
{
    unsigned int seconds = 0;
    const int result = shared_CMIF_get_connection_uptime(&seconds);
    std::snprintf(out, 16, "%u", seconds);
    return result;
}

// Digits of no MNC are nothing to show.
int mnc_digits(char *out)
{
    const int result = shared_CMIF_get_mobileNetworkMNCFormat(out);
    if (std::strcmp(out, "0") == 0)
        out[0] = '\0';
    return result;
}

const Reading readings[]{
    {"modem", "hardware", shared_CMIF_get_mobileHWVersion},
    {"modem", "firmware", shared_CMIF_get_mobileFWVersion},
    {"modem", "imei", shared_CMIF_get_mobileIMEI},

    {"sim", "status", shared_CMIF_get_mobileSimStatus},
    {"sim", "imsi", shared_CMIF_get_mobileIMSI},
    {"sim", "iccid", shared_CMIF_get_mobileSimICCID},
    {"sim", "number", shared_CMIF_get_SubscriberNumber},

    {"network", "registration", shared_CMIF_get_mobileNetworkStatus, Form::code, "",
     names::registration},
    {"network", "selection", shared_CMIF_GetNetworkMode, Form::code, "", names::selection},
    {"network", "operator", shared_CMIF_get_mobileNetworkOperatorName},
    {"network", "operator_long", shared_CMIF_GetOperatorLongName},
    {"network", "operator_short", shared_CMIF_GetOperatorShortName},
    {"network", "operator_code", shared_CMIF_GetOperatorPlmnName},
    {"network", "technology", shared_CMIF_get_OperatorSelectAct, Form::code, "", names::technology},
    {"network", "mcc", shared_CMIF_get_mobileNetworkMCC},
    {"network", "mnc", shared_CMIF_get_mobileNetworkMNC},
    {"network", "mnc_digits", mnc_digits, Form::number},
    {"network", "lac", shared_CMIF_get_mobileNetworkLAC},
    {"network", "cell_id", shared_CMIF_get_mobileNetworkCellID},

    {"last_known", "mcc", shared_CMIF_get_mobileLastKnownMCC},
    {"last_known", "mnc", shared_CMIF_get_mobileLastKnownMNC},
    {"last_known", "lac", shared_CMIF_get_mobileLastKnownLAC},
    {"last_known", "cell_id", shared_CMIF_get_mobileLastKnownCellID},
    {"last_known", "apn", shared_CMIF_get_mobileLastKnownAPN},

    {"radio", "search_mode", shared_CMIF_get_mobileNetworkMode, Form::code, "", names::search_mode},
    {"radio", "band_region", shared_CMIF_GetBandRegion, Form::code, "", names::band_region},
    {"radio", "roaming", shared_CMIF_get_mobileInternationalRoam, Form::code, "", names::roaming},
    {"radio", "access", shared_CMIF_get_mobileACtiveNetwork},
    {"radio", "mode", shared_CMIF_get_mobile4gMode},
    {"radio", "band", shared_CMIF_get_mobileRadioBand},
    {"radio", "channel", shared_CMIF_get_mobileChannelNumber, Form::number},
    {"radio", "rssi", shared_CMIF_get_mobileRSSI, Form::number, "dBm"},
    {"radio", "rssi_3g", shared_CMIF_get_mobile_3G_RSSI, Form::number, "dBm"},
    {"radio", "rsrp", shared_CMIF_get_mobileRSRP, Form::number, "dBm"},
    {"radio", "rsrq", shared_CMIF_get_mobileRSRQ, Form::number, "dB"},
    {"radio", "sinr", shared_CMIF_get_mobileRSSINR, Form::number, "dB"},

    {"data", "state", shared_CMIF_get_connection_status, Form::code, "", names::connection},
    {"data", "uptime", connection_uptime, Form::seconds, "s"},
    {"data", "ipv4", ipv4_address},
    {"data", "ipv6", shared_CMIF_get_mobileIPv6_string},
    {"data", "apn", shared_CMIF_get_mobileNetworkAPN},
    {"data", "pdp_type", shared_CMIF_get_mobileNetworkPDPType, Form::code, "", names::pdp_type},
    {"data", "auto_connect", shared_CMIF_get_auto_connect_when_start_up, Form::flag},
};

Json read_code(CodeGetter getter)
{
    constexpr int unset = -1; // some getters leave the output as it was
    int code = unset;
    return getter(&code) == CMIF_OK && code != unset ? Json(code) : Json();
}

Json value_of(const Reading &reading)
{
    if (const auto *code_getter = std::get_if<CodeGetter>(&reading.getter))
        return read_code(*code_getter);
    Json text;
    read_text(text, std::get<TextGetter>(reading.getter));
    return text;
}

Json number(const std::string &text)
{
    if (const auto whole = whole_number(text))
        return *whole;
    const auto decimal = decimal_number(text);
    return decimal ? Json(*decimal) : Json();
}

// A number that isn't one is null for programs and stays text for people.
Field field(const Reading &reading, const Json &raw)
{
    Field field{reading.key, raw, reading.unit};
    if (raw.is_null())
        return field;
    switch (reading.form) {
    case Form::text:
        break;
    case Form::number:
        field.value = number(raw.get_ref<const std::string &>());
        if (field.value.is_null())
            field.text = raw;
        break;
    case Form::code:
        field.value = enumeration(reading.names, raw);
        break;
    case Form::flag:
        field.value = raw.get<int>() == 1;
        break;
    case Form::seconds:
        field.value = number(raw.get_ref<const std::string &>());
        field.text = duration(field.value.get<long long>());
        break;
    }
    return field;
}

// A field of the record, which runs on into the next one when it is full.
template <std::size_t N>
Json text_of(const char (&text)[N])
{
    const std::size_t length = strnlen(text, N);
    return length == 0 ? Json() : Json(std::string(text, length));
}

int read_summary(Json &output)
{
    WirelessBroadbandInfo info{};
    const int result = shared_CMIF_GetWirelessBroadbandInfo(&info);
    output = {{"identity", text_of(info.NewModemIdentity)},
              {"software", text_of(info.NewModemSWversion)},
              {"imsi", text_of(info.NewIMSI)},
              {"imei", text_of(info.NewIMEI)},
              {"operator", text_of(info.NewOperatorName)},
              {"selection", text_of(info.NewNetworkMode)},
              {"rssi", info.NewRSSI},
              {"modem_status", text_of(info.NewModemCurrentStatus)},
              {"generation", text_of(info.NewModemType)},
              {"number", text_of(info.NewPhoneNumber)}};
    if (info.NewRSSI == 0)
        output["rssi"] = nullptr; // nothing published; no receiver measures 0 dBm
    return result;
}

} // namespace

int read_text(Json &output, TextGetter getter)
{
    static char text[64 * 1024]; // more than any value of a store
    text[0] = '\0';
    const int result = getter(text);
    output = result == CMIF_OK && text[0] != '\0' ? Json(text) : Json();
    return result;
}

void report_readings(Invocation &run, std::initializer_list<std::string_view> sections)
{
    const auto wanted = [&sections](const Reading &reading) {
        return std::find(sections.begin(), sections.end(), reading.section) != sections.end();
    };
    const Json values = call(run.options, {.request = no_request("reading the store"),
                                           .body =
                                               [&wanted](Json &output) {
                                                   require_store();
                                                   for (const Reading &reading : readings)
                                                       if (wanted(reading))
                                                           output.push_back(value_of(reading));
                                                   return 0;
                                               }})
                            .output;
    std::size_t next = 0;
    for (const Reading &reading : readings)
        if (wanted(reading))
            run.report.field(reading.section, field(reading, values.at(next++)));
}

void report_summary(Invocation &run)
{
    const Json summary =
        call(run.options,
             {.request = no_request("shared_CMIF_GetWirelessBroadbandInfo"), .body = read_summary})
            .output;
    constexpr std::string_view shown[]{"operator", "selection", "rssi", "generation", "number"};
    for (const auto &[key, value] : summary.items()) {
        const bool hidden = std::find(std::begin(shown), std::end(shown), key) == std::end(shown);
        run.report.field("summary", {key, value, key == "rssi" ? "dBm" : "", "", hidden});
    }
}

} // namespace cmifctl
