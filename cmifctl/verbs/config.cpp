#include "cmifctl/output/terminal.h"
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

// The value as it may be seen; null when unset.
Json shown(const Invocation &run, const std::string &key, const std::string &value)
{
    if (value.empty())
        return nullptr;
    return is_secret(key) && !run.arguments.has("show-secrets") ? Json("****") : Json(value);
}

std::string given_value(const Invocation &run, const std::string &key)
{
    const std::string value = run.arguments.text("value");
    if (value == "-")
        return ask_secrets({{"value"}}, true).front();
    if (run.arguments.has("value") && is_secret(key))
        throw Failure(Exit::usage, "a password isn't taken from the command line",
                      "Leave it out to be asked for it, or give - and write it to standard input.");
    return run.arguments.has("value") ? value : ask_secrets({{"value", true}}, false).front();
}

} // namespace

void config_get(Invocation &run)
{
    const std::string key = run.arguments.text("key");
    const Json value = shown(run, key, setting(run, key));
    run.report.data(key, value);
    if (!value.is_null())
        run.report.line(value.get<std::string>());
}

void config_set(Invocation &run)
{
    const std::string key = run.arguments.text("key");
    const std::string value = given_value(run, key);
    change_setting(run, key, value);
    run.report.data(key, shown(run, key, value));
}

void config_list(Invocation &run)
{
    const std::string prefix = run.arguments.text("prefix");
    const Json settings = all_settings(run);
    for (const auto &[key, value] : settings.items()) {
        if (!key.starts_with(prefix))
            continue;
        const Json seen = shown(run, key, value);
        run.report.data(key, seen);
        run.report.line(key + "=" + (seen.is_null() ? "" : seen.get<std::string>()));
    }
}

void config_save(Invocation &run)
{
    save_settings(run);
    run.report.data("saved", true);
}

} // namespace cmifctl
