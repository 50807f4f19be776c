#include "cmifctl/input/questions.h"
#include "cmifctl/output/terminal.h"
#include "settings.h"
#include "store.h"
#include "verbs.h"

namespace cmifctl
{
namespace
{

bool is_secret(const std::string &key)
{
    return key.find("password") != std::string::npos;
}

// {"key", "value", "hidden"}: a secret that isn't shown has no value.
Json entry(const Context &context, const std::string &key, const std::string &value)
{
    const bool hidden = is_secret(key) && !value.empty() && !context.arguments.has("show-secrets");
    return {{"key", key}, {"value", text_or_null(hidden ? "" : value)}, {"hidden", hidden}};
}

// For people.
std::string value_text(const Json &entry)
{
    if (entry["hidden"] == true)
        return "****";
    return entry["value"].is_null() ? "" : entry["value"].get<std::string>();
}

// These show this process's store, whichever the daemons use.
void note_other_store()
{
    if (const std::string other = other_store(); !other.empty())
        note(other);
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
    const Json found = entry(context, key, setting(context, key));
    note_other_store();
    context.report.data("setting", found);
    if (const std::string text = value_text(found); !text.empty())
        context.report.line(text);
}

void config_set(Context &context)
{
    const std::string key = context.arguments.text("key");
    const std::string value = given_value(context, key);
    change_setting(context, key, value);
    context.report.data("setting", entry(context, key, value));
}

void config_list(Context &context)
{
    const std::string prefix = context.arguments.text("prefix");
    Json list = Json::array();
    const Json all = all_settings(context);
    note_other_store();
    for (const auto &[key, value] : all.items()) {
        if (!key.starts_with(prefix))
            continue;
        list.push_back(entry(context, key, value));
        context.report.line(key + "=" + value_text(list.back()));
    }
    context.report.data("settings", std::move(list));
}

void config_save(Context &context)
{
    save_settings(context);
    context.report.data("result", "saved");
}

} // namespace cmifctl
