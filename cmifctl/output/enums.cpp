#include "enums.h"

#include <algorithm>

namespace cmifctl
{

Json enumeration(EnumTable table, int code)
{
    const auto found = std::find_if(table.begin(), table.end(),
                                    [code](const EnumValue &value) { return value.code == code; });
    return {{"code", code}, {"name", found == table.end() ? Json() : Json(found->name)}};
}

Json named(EnumTable table, const Json &text)
{
    if (text.is_null())
        return text;
    const std::optional<int> code = cli::code_of(table, text.get_ref<const std::string &>());
    return code ? enumeration(table, *code) : Json{{"code", nullptr}, {"name", text}};
}

} // namespace cmifctl
