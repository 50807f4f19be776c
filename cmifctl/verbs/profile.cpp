#include "cmif/cmif.h"
#include "cmifctl/calls.h"
#include "cmifctl/input/questions.h"
#include "cmifctl/output/terminal.h"
#include "store.h"
#include "verbs.h"

#include <array>
#include <cstring>
#include <sys/stat.h>

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

Json code_or_null(const char *key, int code)
{
    return is_stored(key) ? Json(code) : Json();
}

int read_profile(Json &output)
{
    qmi_profile profile{};
    const int result = shared_CMIF_get_profile_settings(&profile);
    output = {{"apn", field_text(profile.apn)},
              {"user", field_text(profile.user)},
              {"password", field_text(profile.password)},
              {"auth", code_or_null("lte_qmi_auth", profile.auth)},
              {"pdp", code_or_null("lte_qmi_pdp", profile.pdp)},
              {"family", code_or_null("lte_qmi_cur_ip_family", profile.curIpFamily)}};
    return result;
}

Call reading(Body body)
{
    return {.request = no_request("shared_CMIF_get_profile_settings"),
            .body = std::move(body),
            .logs = true,
            .secret = true};
}

// What isn't set is unknown; what could not be read is null already.
Json set_or_null(const Json &text)
{
    return text.is_string() ? text_or_null(text) : text;
}

void report_profile(Context &context)
{
    const Json profile = read_published(context, reading(read_profile));
    const Json password = set_or_null(profile["password"]);
    const Json password_set = profile["password"].is_null() ? Json() : Json(!password.is_null());
    const bool hidden = !context.arguments.has("show-secrets") && !password.is_null();
    const auto add = [&context](Field field) { context.report.field("profile", std::move(field)); };
    add({"apn", set_or_null(profile["apn"])});
    add({"user", set_or_null(profile["user"])});
    add({.key = "password", .value = hidden ? Json() : password, .text = hidden ? mask : ""});
    add({.key = "password_set", .value = password_set, .hidden = true});
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

// What isn't set counts as 0 for the daemon, too.
int code_or_0(const Json &code)
{
    return code.is_null() ? 0 : code.get<int>();
}

qmi_profile record(const Json &profile)
{
    qmi_profile record{};
    set_field(record.apn, profile["apn"]);
    set_field(record.user, profile["user"]);
    set_field(record.password, profile["password"]);
    record.auth = code_or_0(profile["auth"]);
    record.pdp = code_or_0(profile["pdp"]);
    record.curIpFamily = code_or_0(profile["family"]);
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

// 0 without one.
ino_t marker_file()
{
    struct stat marker {
    };
    return lstat(CMIF_PROFILE_BUSY_FILE, &marker) == 0 ? marker.st_ino : 0;
}

// The call removes an earlier marker, too, unless it is another user's.
void note_kept_marker(ino_t before)
{
    if (before != 0 && marker_file() == before)
        note("the profile is changed, but the earlier marker " CMIF_PROFILE_BUSY_FILE
             " could not be removed; a change counts as in progress until its owner or root "
             "removes it");
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
    // What isn't given stays as the daemon has it.
    Json profile = qmi_call(context, reading(in_daemons_store(read_profile)));
    change(profile, context.arguments);
    const qmi_profile wanted = record(profile);
    const ino_t before = marker_file();
    const int automatic = context.arguments.has("auto-apn") ? 1 : 0;
    qmi_call(
        context,
        {.request = qmi_request("shared_CMIF_modify_profile_settings", CMIF_QMI_MODIFY_PROFILE),
         .body = in_daemons_store([&wanted, automatic](Json &) {
             return shared_CMIF_modify_profile_settings(wanted, automatic);
         }),
         .secret = true,
         .mute_stderr = true, // its shell commands complain about a marker of another user
         .marker = CMIF_PROFILE_BUSY_FILE});
    note_kept_marker(before);
    report_profile(context);
}

} // namespace cmifctl
