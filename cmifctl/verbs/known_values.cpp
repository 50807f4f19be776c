#include "known_values.h"

#include "cmifctl/output/times.h"
#include "providers.h"
#include "settings.h"
#include "store.h"

#include <algorithm>

namespace cmifctl
{
namespace
{

using Candidates = std::vector<cli::Candidate>;

// Short, because a user waits at the keyboard.
Context reading()
{
    constexpr double time_limit = 1;
    Context context;
    context.options.timeout = time_limit;
    return context;
}

// Completion has no place for a reason.
Candidates without_failures(Candidates (*read)(Context &))
try {
    Context context = reading();
    return read(context);
} catch (const Failure &) {
    return {};
}

std::string text_of(const Json &object, const std::string &key)
{
    const Json value = object.value(key, Json());
    return value.is_string() ? value.get<std::string>() : "";
}

Candidates read_messages(Context &context)
{
    const Json settings = other_store().empty() ? all_settings(context) : Json::object();
    Candidates messages;
    for (int i = 1;; ++i) {
        const auto field = [&](const char *name) {
            return text_of(settings,
                           std::string("lte_mobile_sms_") + name + "_" + std::to_string(i));
        };
        const std::string id = field("id");
        if (id.empty())
            return messages;
        const std::string time = short_time(field("scts"));
        messages.push_back({id, "from " + field("da") + (time.empty() ? "" : ", " + time)});
    }
}

// An operator is listed once for each technology.
Candidates read_operators(Context &context)
{
    report_providers(context);
    Candidates operators;
    const Json document = context.report.document();
    for (const Json &row : document["providers"]) {
        const std::string code = text_of(row, "code");
        if (std::none_of(operators.begin(), operators.end(),
                         [&code](const cli::Candidate &known) { return known.value == code; }))
            operators.push_back({code, text_of(row, "name")});
    }
    return operators;
}

Candidates read_settings(Context &context)
{
    const Json settings = all_settings(context);
    Candidates keys;
    for (const auto &[key, value] : settings.items())
        keys.push_back({key, ""});
    return keys;
}

} // namespace

Candidates known_messages()
{
    return without_failures(read_messages);
}

Candidates known_operators()
{
    return without_failures(read_operators);
}

Candidates known_settings()
{
    return without_failures(read_settings);
}

} // namespace cmifctl
