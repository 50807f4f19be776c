#include "cmifctl/input/questions.h"
#include "settings.h"
#include "verbs.h"

namespace cmifctl
{
namespace
{

bool is_secret(const std::string &key)
{
    return key.find("password") != std::string::npos;
}

// The value, masked if it is a password; null when unset.
Json shown(const Context &context, const std::string &key, const std::string &value)
{
    if (value.empty())
        return nullptr;
    return is_secret(key) && !context.arguments.has("show-secrets") ? Json("****") : Json(value);
}

std::string given_value(const Context &context, const std::string &key)
{
    const std::string value = context.arguments.text("value");
    if (value == "-")
        return ask_secrets({{"value"}}, true).front();
    if (context.arguments.has("value") && is_secret(key))
        throw Failure(Exit::usage, "passwords are not taken from the command line",
                      "Leave it out to be asked for it, or give - and write it to standard input.");
    return context.arguments.has("value") ? value : ask_secrets({{"value", true}}, false).front();
}

} // namespace

void config_get(Context &context)
{
    const std::string key = context.arguments.text("key");
    const Json value = shown(context, key, setting(context, key));
    context.report.data(key, value);
    if (!value.is_null())
        context.report.line(value.get<std::string>());
}

void config_set(Context &context)
{
    const std::string key = context.arguments.text("key");
    const std::string value = given_value(context, key);
    change_setting(context, key, value);
    context.report.data(key, shown(context, key, value));
}

void config_list(Context &context)
{
    const std::string prefix = context.arguments.text("prefix");
    const Json settings = all_settings(context);
    for (const auto &[key, value] : settings.items()) {
        if (!key.starts_with(prefix))
            continue;
        const Json visible = shown(context, key, value);
        context.report.data(key, visible);
        context.report.line(key + "=" + (visible.is_null() ? "" : visible.get<std::string>()));
    }
}

void config_save(Context &context)
{
    save_settings(context);
    context.report.data("saved", true);
}

} // namespace cmifctl
