#include "readings.h"

#include "cli/numbers.h"
#include "cmif/cmif.h"
#include "cmifctl/output/terminal.h"
#include "cmifctl/output/times.h"
#include "platform/tarn_nvram_config.h"
#include "reading_rows.h"
#include "store.h"

#include <algorithm>
#include <functional>

namespace cmifctl
{
namespace
{

Json read_code(Reading::CodeGetter getter)
{
    constexpr int unset = -1; // some getters leave the output as it was
    int value = unset;
    return getter(&value) == CMIF_OK && value != unset ? Json(value) : Json();
}

Json raw_value(const Reading &reading)
{
    Json value;
    if (!is_stored(reading.stored))
        return value; // where some getters give a number
    if (const auto *code_getter = std::get_if<Reading::CodeGetter>(&reading.getter))
        return read_code(*code_getter);
    if (const auto *text_getter = std::get_if<Reading::TextGetter>(&reading.getter))
        read_text(value, *text_getter);
    else
        value = tarnNvramConfig_get(reading.stored);
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
    if (raw.is_null() || reading.form == Form::text)
        return field;
    if (reading.form == Form::code)
        return coded(reading.key, reading.table, raw);
    if (reading.form == Form::flag)
        field.value = raw == 1;
    else
        field.value = number_or_null(raw);

    if (field.value.is_null()) // text where a number belongs, which people see as it is
        field.text = raw;
    else if (reading.form == Form::seconds)
        field.text = duration(field.value.get<long long>());
    return field;
}

using Wanted = std::function<bool(const Reading &)>;

bool report_if(Context &context, const Wanted &wanted)
{
    const Body body = [&wanted](Json &output) {
        for (const Reading &reading : all_readings())
            if (wanted(reading))
                output.push_back(raw_value(reading));
        return 0;
    };
    const Json values =
        read_published(context, {.request = no_request("reading the store"), .body = body});
    std::size_t next = 0;
    for (const Reading &reading : all_readings())
        if (wanted(reading))
            context.report.field(reading.section, field(reading, values.at(next++)));
    return std::any_of(values.begin(), values.end(),
                       [](const Json &value) { return !value.is_null(); });
}

} // namespace

int read_text(Json &output, int (*getter)(char *))
{
    static char buffer[64 * 1024]; // more than any value of a store
    buffer[0] = '\0';
    const int result = getter(buffer);
    output = text_or_null(result == CMIF_OK ? buffer : "");
    return result;
}

bool report_readings(Context &context, std::initializer_list<std::string_view> sections)
{
    return report_if(context, [&sections](const Reading &reading) {
        return std::find(sections.begin(), sections.end(), reading.section) != sections.end();
    });
}

void report_reading(Context &context, std::string_view section, std::string_view key)
{
    const bool known = report_if(context, [section, key](const Reading &reading) {
        return reading.section == section && reading.key == key;
    });
    if (!known)
        note(other_store().empty() ? "the value is not known: nothing is stored"
                                   : "the value is not known");
}

} // namespace cmifctl
