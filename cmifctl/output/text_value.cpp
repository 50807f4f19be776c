#include "text_value.h"

#include "client/json.h"
#include "terminal_text.h"

namespace cmifctl
{

std::string value_text(const client::Json &value)
{
    if (value.is_string())
        return escape_controls(value.get_ref<const std::string &>(), Lines::kept);
    if (value.is_boolean())
        return value.get<bool>() ? "yes" : "no";
    if (value.is_object() && value.contains("name"))
        return value_text(value["name"].is_null() ? value["code"] : value["name"]);
    return value.is_null() ? "" : value.dump();
}

std::string bold(const std::string &text, bool colour)
{
    return colour ? "\033[1m" + text + "\033[0m" : text;
}

} // namespace cmifctl
