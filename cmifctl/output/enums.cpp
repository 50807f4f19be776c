#include "enums.h"

#include <algorithm>

namespace cmifctl
{

Json enumeration(Names names, int code)
{
    const auto found = std::find_if(names.begin(), names.end(),
                                    [code](const Name &name) { return name.code == code; });
    return {{"code", code}, {"name", found == names.end() ? Json() : Json(found->name)}};
}

Json named(Names names, const Json &text)
{
    if (text.is_null())
        return text;
    const std::optional<int> code = code_of(names, text.get_ref<const std::string &>());
    return code ? enumeration(names, *code) : Json{{"code", nullptr}, {"name", text}};
}

std::optional<int> code_of(Names names, std::string_view text)
{
    for (const Name &name : names)
        if (text == name.name || text == std::to_string(name.code))
            return name.code;
    return std::nullopt;
}

std::string choices(Names names, std::string_view separator)
{
    std::string list;
    for (const Name &name : names)
        list.append(list.empty() ? "" : separator).append(name.name);
    return list;
}

} // namespace cmifctl
