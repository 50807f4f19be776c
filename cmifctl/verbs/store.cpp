#include "store.h"

#include "cmifctl/output/terminal.h"
#include "cmifctl/output/times.h"
#include "platform/host_store.h"
#include "platform/tarn_nvram_config.h"

#include <filesystem>

namespace cmifctl
{

bool is_platforms_store()
{
    return *host_store_directory() == '\0';
}

std::string other_store()
{
    const std::string own = host_store_directory();
    const std::string daemons = host_store_announced();
    std::error_code ignored;
    if (daemons.empty() || daemons == own || std::filesystem::equivalent(daemons, own, ignored))
        return "";
    return "the daemons use the store " + daemons + ", and this command " + own +
           "; CMIF_STORE=" + daemons + " selects theirs";
}

void require_store()
{
    if (is_platforms_store())
        return;
    check_store(host_store_list([](const char *, const char *, void *) {}, nullptr),
                "the settings can't be read");
}

void require_daemons_store()
{
    if (const std::string other = other_store(); !other.empty())
        throw Failure(Exit::other, other);
    require_store();
}

Body in_daemons_store(Body body)
{
    return [body = std::move(body)](Json &output) {
        require_daemons_store();
        return body(output);
    };
}

bool is_stored(const char *key)
{
    return tarnNvramConfig_match(key, "") == 0;
}

Json at_reading(const Context &context, Call call)
{
    call.body = in_daemons_store(std::move(call.body));
    return at_call(context, call);
}

Json read_published(const Context &context, Call call)
{
    call.body = [body = std::move(call.body)](Json &output) {
        require_store();
        return body(output);
    };
    const std::string other = other_store();
    Json values = client::call(context.options, call).output;
    if (other.empty())
        return values;
    note(other);
    for (Json &value : values)
        value = nullptr;
    return values;
}

void report_store(Report &report, bool is_known)
{
    const std::string daemons = host_store_announced();
    const auto age = static_cast<long long>(is_known ? host_store_age() : -1);
    const Json known_age = age < 0 ? Json() : Json(age);
    const auto add = [&report](Field field) { report.field("store", std::move(field)); };
    add({"directory", text_or_null(host_store_directory())});
    add({.key = "daemons_directory",
         .value = daemons.empty() ? Json() : Json(daemons),
         .hidden = daemons == host_store_directory()});
    add({"age", known_age, "s", age < 0 ? "" : duration(age)});
}

void check_store(int result, const std::string &what)
{
    if (result == 0)
        return;
    if (is_platforms_store())
        throw Failure(Exit::other, what);
    throw Failure(Exit::other, what,
                  "The store is in " + std::string(host_store_directory()) +
                      "; CMIF_STORE selects another directory.");
}

} // namespace cmifctl
