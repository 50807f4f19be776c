#include "cmif/cmif.h"
#include "cmifctl/output/terminal.h"
#include "verbs.h"

#include <array>
#include <cstring>

namespace cmifctl
{

namespace
{

constexpr const char *mask = "****";

// As wide as a field of the profile, terminated or not.
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

Json stored_profile(const Invocation &run)
{
    return ask_qmi(run, {.request = no_request("shared_CMIF_get_profile_settings"),
                         .body = read_profile,
                         .logs = true,
                         .secret = true});
}

bool empty(const Json &text)
{
    return text.get_ref<const std::string &>().empty();
}

void report_profile(Invocation &run)
{
    Json profile = stored_profile(run);
    const bool hidden = !run.arguments.has("show-secrets") && !empty(profile["password"]);
    if (hidden)
        profile["password"] = mask;
    for (const char *key : {"apn", "user", "password"})
        run.report.field("profile", {key, empty(profile[key]) ? Json() : profile[key]});
    run.report.field("profile", {"auth", enumeration(names::authentication, profile["auth"])});
    run.report.field("profile", {"pdp", enumeration(names::profile_pdp, profile["pdp"])});
    run.report.field("profile", {"family", enumeration(names::ip_family, profile["family"])});
}

void check_length(const char *name, const std::string &text, std::size_t most)
{
    if (text.size() > most)
        throw Failure(Exit::invalid,
                      std::string("the ") + name + " has " + std::to_string(text.size()) +
                          " bytes, nothing was sent",
                      std::string("At most ") + std::to_string(most) + ".");
}

template <std::size_t N>
void put(char (&field)[N], const Json &text)
{
    const auto &string = text.get_ref<const std::string &>();
    std::memcpy(field, string.data(), std::min(string.size(), N - 1));
}

qmi_profile record(const Json &profile)
{
    qmi_profile record{};
    put(record.apn, profile["apn"]);
    put(record.user, profile["user"]);
    put(record.password, profile["password"]);
    record.auth = profile["auth"];
    record.pdp = profile["pdp"];
    record.curIpFamily = profile["family"];
    return record;
}

// The profile as it travels: three texts, then a digit in each of three fields of four bytes.
Request modify_request(const qmi_profile &profile)
{
    constexpr std::size_t texts = 299;
    Request request = qmi_request("shared_CMIF_modify_profile_settings", 3, CMIF_QMI_PAYLOAD);
    std::memcpy(request.payload.data(), &profile, texts);
    const auto digit = [](int number, int most) {
        return static_cast<char>('0' + (number < 0 || number > most ? 0 : number));
    };
    request.payload[texts] = digit(profile.auth, 3);
    request.payload[texts + 4] = digit(profile.pdp, 3);
    request.payload[texts + 8] = digit(profile.curIpFamily, 1);
    return request;
}

// What the user gives, over what is there.
void change(Json &profile, const Arguments &given)
{
    for (const char *key : {"apn", "user"})
        if (const auto text = given.given(key))
            profile[key] = *text;
    if (given.has("password")) {
        const bool from_input = given.text("password") == "-";
        profile["password"] = ask_secrets({{"password", true}}, from_input).front();
    }
    const std::array<std::pair<const char *, Names>, 3> codes{{{"auth", names::authentication},
                                                               {"pdp", names::profile_pdp},
                                                               {"family", names::ip_family}}};
    for (const auto &[key, table] : codes)
        if (given.has(key))
            profile[key] = given.code(key, table);
    check_length("apn", profile["apn"], 40);
    check_length("user", profile["user"], 128);
    check_length("password", profile["password"], 128);
}

} // namespace

void profile_show(Invocation &run)
{
    report_profile(run);
}

void profile_set(Invocation &run)
{
    bool any = false;
    for (const char *key : {"apn", "user", "password", "auth", "pdp", "family"})
        any = any || run.arguments.has(key);
    if (!any)
        throw Failure(Exit::usage, "nothing to change", "Give at least one option, as --apn NAME.");
    Json profile = stored_profile(run);
    change(profile, run.arguments);
    const qmi_profile wanted = record(profile);
    const int automatic = run.arguments.has("auto-apn") ? 1 : 0;
    ask_qmi(run,
            {.request = modify_request(wanted),
             .body = [&wanted, automatic](
                         Json &) { return shared_CMIF_modify_profile_settings(wanted, automatic); },
             .secret = true,
             .marker = CMIF_PROFILE_BUSY_FILE});
    report_profile(run);
}

} // namespace cmifctl
