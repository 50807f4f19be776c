#include "readings.h"

#include "cli/numbers.h"
#include "cmif/cmif.h"
#include "cmifctl/output/times.h"
#include "settings.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <variant>

namespace cmifctl
{
namespace
{

using TextGetter = int (*)(char *);
using CodeGetter = int (*)(int *);

enum class Form { text, number, code, flag, seconds };
using enum Form;

struct Reading {
    const char *section;
    const char *key;
    std::variant<TextGetter, CodeGetter> getter;
    Form form = text;
    const char *unit = "";
    EnumTable table{};
};

int connection_uptime(char *out)
{
    unsigned int uptime = 0;
    const int result = shared_CMIF_get_connection_uptime(&uptime);
    std::snprintf(out, 16, "%u", uptime);
    return result;
}

// Empty for "0", which the library gives when there is no MNC.
int mnc_digits(char *out)
{
    const int result = shared_CMIF_get_mobileNetworkMNCFormat(out);
    if (std::strcmp(out, "0") == 0)
        out[0] = '\0';
    return result;
}

// clang-format off
const Reading readings[] = {
    //section      key               getter                                      form     unit   table
    {"modem",      "hardware",       shared_CMIF_get_mobileHWVersion},
    {"modem",      "firmware",       shared_CMIF_get_mobileFWVersion},
    {"modem",      "imei",           shared_CMIF_get_mobileIMEI},

    {"sim",        "status",         shared_CMIF_get_mobileSimStatus},
    {"sim",        "imsi",           shared_CMIF_get_mobileIMSI},
    {"sim",        "iccid",          shared_CMIF_get_mobileSimICCID},
    {"sim",        "number",         shared_CMIF_get_SubscriberNumber},

    {"network",    "registration",   shared_CMIF_get_mobileNetworkStatus,        code,    "",    enums::registration},
    {"network",    "selection",      shared_CMIF_GetNetworkMode,                 code,    "",    enums::selection},
    {"network",    "operator",       shared_CMIF_get_mobileNetworkOperatorName},
    {"network",    "operator_long",  shared_CMIF_GetOperatorLongName},
    {"network",    "operator_short", shared_CMIF_GetOperatorShortName},
    {"network",    "operator_code",  shared_CMIF_GetOperatorPlmnName},
    {"network",    "technology",     shared_CMIF_get_OperatorSelectAct,          code,    "",    enums::technology},
    {"network",    "mcc",            shared_CMIF_get_mobileNetworkMCC},
    {"network",    "mnc",            shared_CMIF_get_mobileNetworkMNC},
    {"network",    "mnc_digits",     mnc_digits,                                 number},
    {"network",    "lac",            shared_CMIF_get_mobileNetworkLAC},
    {"network",    "cell_id",        shared_CMIF_get_mobileNetworkCellID},

    {"last_known", "mcc",            shared_CMIF_get_mobileLastKnownMCC},
    {"last_known", "mnc",            shared_CMIF_get_mobileLastKnownMNC},
    {"last_known", "lac",            shared_CMIF_get_mobileLastKnownLAC},
    {"last_known", "cell_id",        shared_CMIF_get_mobileLastKnownCellID},
    {"last_known", "apn",            shared_CMIF_get_mobileLastKnownAPN},

    {"radio",      "search_mode",    shared_CMIF_get_mobileNetworkMode,          code,    "",    enums::search_mode},
    {"radio",      "band_region",    shared_CMIF_GetBandRegion,                  code,    "",    enums::band_region},
    {"radio",      "roaming",        shared_CMIF_get_mobileInternationalRoam,    code,    "",    enums::roaming},
    {"radio",      "access",         shared_CMIF_get_mobileACtiveNetwork},
    {"radio",      "mode",           shared_CMIF_get_mobile4gMode},
    {"radio",      "band",           shared_CMIF_get_mobileRadioBand},
    {"radio",      "channel",        shared_CMIF_get_mobileChannelNumber,        number},
    {"radio",      "rssi",           shared_CMIF_get_mobileRSSI,                 number,  "dBm"},
    {"radio",      "rssi_3g",        shared_CMIF_get_mobile_3G_RSSI,             number,  "dBm"},
    {"radio",      "rsrp",           shared_CMIF_get_mobileRSRP,                 number,  "dBm"},
    {"radio",      "rsrq",           shared_CMIF_get_mobileRSRQ,                 number,  "dB"},
    {"radio",      "sinr",           shared_CMIF_get_mobileRSSINR,               number,  "dB"},

    {"data",       "state",          shared_CMIF_get_connection_status,          code,    "",    enums::connection},
    {"data",       "uptime",         connection_uptime,                          seconds, "s"},
    {"data",       "ipv4",           shared_CMIF_get_mobileIPv4_string},
    {"data",       "ipv6",           shared_CMIF_get_mobileIPv6_string},
    {"data",       "apn",            shared_CMIF_get_mobileNetworkAPN},
    {"data",       "pdp_type",       shared_CMIF_get_mobileNetworkPDPType,       code,    "",    enums::pdp_type},
    {"data",       "auto_connect",   shared_CMIF_get_auto_connect_when_start_up, flag},
};
// clang-format on

Json read_code(CodeGetter getter)
{
    constexpr int unset = -1; // some getters leave the output as it was
    int value = unset;
    return getter(&value) == CMIF_OK && value != unset ? Json(value) : Json();
}

Json raw_value(const Reading &reading)
{
    if (const auto *code_getter = std::get_if<CodeGetter>(&reading.getter))
        return read_code(*code_getter);
    Json value;
    read_text(value, std::get<TextGetter>(reading.getter));
    return value;
}

Json number_or_null(const Json &value)
{
    const auto &digits = value.get_ref<const std::string &>();
    if (const auto whole = cli::whole_number(digits))
        return *whole;
    const auto decimal = cli::decimal_number(digits);
    return decimal ? Json(*decimal) : Json();
}

Field field(const Reading &reading, const Json &raw)
{
    Field field{.key = reading.key, .value = raw, .unit = reading.unit};
    if (raw.is_null() || reading.form == text)
        return field;
    if (reading.form == code)
        field.value = enumeration(reading.table, raw);
    else if (reading.form == flag)
        field.value = raw == 1;
    else
        field.value = number_or_null(raw);

    if (field.value.is_null()) // text where a number belongs, which people see as it is
        field.text = raw;
    else if (reading.form == seconds)
        field.text = duration(field.value.get<long long>());
    return field;
}

} // namespace

int read_text(Json &output, TextGetter getter)
{
    static char buffer[64 * 1024]; // more than any value of a store
    buffer[0] = '\0';
    const int result = getter(buffer);
    output = result == CMIF_OK && buffer[0] != '\0' ? Json(buffer) : Json();
    return result;
}

void report_readings(Context &context, std::initializer_list<std::string_view> sections)
{
    const auto wanted = [&sections](const Reading &reading) {
        return std::find(sections.begin(), sections.end(), reading.section) != sections.end();
    };
    const Json values = read(context, "reading the store", [&wanted](Json &output) {
        require_store();
        for (const Reading &reading : readings)
            if (wanted(reading))
                output.push_back(raw_value(reading));
        return 0;
    });
    std::size_t next = 0;
    for (const Reading &reading : readings)
        if (wanted(reading))
            context.report.field(reading.section, field(reading, values.at(next++)));
}

} // namespace cmifctl
