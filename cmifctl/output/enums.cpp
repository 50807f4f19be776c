#include "enums.h"

#include "cli/numbers.h"
#include "client/json.h"

#include <algorithm>

namespace cmifctl
{
namespace
{

const EnumValue *find(EnumTable table, long long code)
{
    const auto found = std::find_if(table.begin(), table.end(),
                                    [code](const EnumValue &value) { return value.code == code; });
    return found == table.end() ? nullptr : &*found;
}

std::string text_of(const EnumValue &value)
{
    std::string text = *value.text != '\0' ? value.text : value.name;
    std::replace(text.begin(), text.end(), '_', ' ');
    return text;
}

} // namespace

Json enumeration(EnumTable table, const Json &raw)
{
    if (raw.is_null())
        return raw;
    Json code = raw;
    if (raw.is_string()) {
        const auto &text = raw.get_ref<const std::string &>();
        if (const auto known = cli::code_of(table, text))
            code = *known;
        else if (const auto number = cli::whole_number(text))
            code = *number;
        else
            return {{"code", nullptr}, {"name", nullptr}, {"text", raw}};
    }
    const EnumValue *value = find(table, code);
    return {{"code", code}, {"name", value == nullptr ? Json() : Json(value->name)}};
}

std::string enumeration_text(EnumTable table, const Json &raw)
{
    const Json all = enumeration(table, raw);
    if (all.is_null())
        return "";
    if (all["code"].is_null())
        return all["text"];
    const EnumValue *value = find(table, all["code"]);
    return value == nullptr ? "unknown (" + all["code"].dump() + ")" : text_of(*value);
}

} // namespace cmifctl
