#include "cmif/cmif.h"
#include "cmifctl/calls.h"
#include "cmifctl/input/questions.h"
#include "verbs.h"

#include <array>
#include <cstring>

namespace cmifctl
{
namespace
{

constexpr const char *mask = "****"; // for people

// A field of the profile, which may be full and without a NUL.
template <std::size_t N>
std::string field_text(const char (&field)[N])
{
    return {field, strnlen(field, N)};
}

int read_profile(Json &output)
{
    qmi_profile profile{};
    const int result = shared_CMIF_get_profile_settings(&profile);
    output = {{"apn", field_text(profile.apn)},
              {"user", field_text(profile.user)},
              {"password", field_text(profile.password)},
              {"auth", profile.auth},
              {"pdp", profile.pdp},
              {"family", profile.curIpFamily}};
    return result;
}

Json stored_profile(const Context &context)
{
    return qmi_call(context, {.request = no_request("shared_CMIF_get_profile_settings"),
                              .body = read_profile,
                              .logs = true,
                              .secret = true});
}

Json text_or_null(const Json &text)
{
    return text.get_ref<const std::string &>().empty() ? Json() : text;
}

void report_profile(Context &context)
{
    const Json profile = stored_profile(context);
    const Json password = text_or_null(profile["password"]);
    const bool hidden = !context.arguments.has("show-secrets") && !password.is_null();
    const auto add = [&context](Field field) { context.report.field("profile", std::move(field)); };
    add({"apn", text_or_null(profile["apn"])});
    add({"user", text_or_null(profile["user"])});
    add({.key = "password", .value = hidden ? Json() : password, .text = hidden ? mask : ""});
    add({.key = "password_set", .value = !password.is_null(), .hidden = true});
    add(coded("authentication", enums::authentication, profile["auth"]));
    add(coded("pdp_type", enums::pdp_type, profile["pdp"]));
    add(coded("ip_family", enums::ip_family, profile["family"]));
}

template <std::size_t N>
void set_field(char (&field)[N], const Json &text)
{
    const auto &string = text.get_ref<const std::string &>();
    std::memcpy(field, string.data(), std::min(string.size(), N - 1));
}

qmi_profile record(const Json &profile)
{
    qmi_profile record{};
    set_field(record.apn, profile["apn"]);
    set_field(record.user, profile["user"]);
    set_field(record.password, profile["password"]);
    record.auth = profile["auth"];
    record.pdp = profile["pdp"];
    record.curIpFamily = profile["family"];
    return record;
}

// Replaces what the user gives.
void change(Json &profile, const Arguments &given)
{
    for (const char *key : {"apn", "user"})
        if (const auto text = given.given(key))
            profile[key] = *text;
    if (given.has("password")) {
        const bool from_input = given.text("password") == "-";
        profile["password"] = ask_secrets({{"password", true}}, from_input).front();
    }
    const std::array<std::pair<const char *, EnumTable>, 3> codes{
        {{"auth", enums::authentication}, {"pdp", enums::pdp_type}, {"family", enums::ip_family}}};
    for (const auto &[key, table] : codes)
        if (given.has(key))
            profile[key] = given.code(key, table);
    check_length("apn", profile["apn"], 40);
    check_length("user", profile["user"], 128);
    check_length("password", profile["password"], 128);
}

} // namespace

void profile_show(Context &context)
{
    report_profile(context);
}

void profile_set(Context &context)
{
    bool any = false;
    for (const char *key : {"apn", "user", "password", "auth", "pdp", "family"})
        any = any || context.arguments.has(key);
    if (!any)
        throw Failure(Exit::usage, "nothing to change",
                      "Give at least one option, for example --apn NAME.");
    Json profile = stored_profile(context);
    change(profile, context.arguments);
    const qmi_profile wanted = record(profile);
    const int automatic = context.arguments.has("auto-apn") ? 1 : 0;
    qmi_call(
        context,
        {.request = qmi_request("shared_CMIF_modify_profile_settings", CMIF_QMI_MODIFY_PROFILE),
         .body = [&wanted, automatic](
                     Json &) { return shared_CMIF_modify_profile_settings(wanted, automatic); },
         .secret = true,
         .marker = CMIF_PROFILE_BUSY_FILE});
    report_profile(context);
}

} // namespace cmifctl
