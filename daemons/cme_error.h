// What a daemon answers: 0, or why it could not do what was asked. One table for the daemons and
// for the programs that show the answer.
//
// The numbers are those of +CME ERROR and +CMS ERROR (3GPP TS 27.007, 27.005) from 10 on. Smaller
// ones would be mistaken for the library's own results and are moved up by 200. From 220 on the
// numbers are ours.
#ifndef DAEMONS_CME_ERROR_H
#define DAEMONS_CME_ERROR_H

namespace daemons
{

enum class CmeError : int {
    ok = 0,
    sim_not_inserted = 10,
    sim_pin_required = 11,
    sim_puk_required = 12,
    sim_failure = 13,
    sim_busy = 14,
    sim_wrong = 15,
    incorrect_password = 16,
    sim_pin2_required = 17,
    sim_puk2_required = 18,
    memory_full = 20,
    invalid_index = 21,
    not_found = 22,
    memory_failure = 23,
    text_too_long = 24,
    invalid_characters_in_text = 25,
    dial_string_too_long = 26,
    invalid_characters_in_dial_string = 27,
    no_network_service = 30,
    network_timeout = 31,
    network_not_allowed = 32,
    network_pin_required = 40,
    network_puk_required = 41,
    incorrect_parameters = 50,
    unknown = 100,
    missing_apn = 127,
    phone_failure = 200,
    no_connection_to_phone = 201,
    not_allowed = 203,
    not_supported = 204,
    phone_pin_required = 205,
    file_not_written = 220,
    search_running = 221,
};

struct CmeErrorText {
    CmeError error;
    const char *name; // for programs
    const char *text; // for a person
};

// clang-format off
inline constexpr CmeErrorText cme_errors[] = {
    {CmeError::ok,                                "ok",                                "done"},
    {CmeError::sim_not_inserted,                  "sim_not_inserted",                  "SIM not inserted"},
    {CmeError::sim_pin_required,                  "sim_pin_required",                  "SIM PIN required"},
    {CmeError::sim_puk_required,                  "sim_puk_required",                  "SIM PUK required"},
    {CmeError::sim_failure,                       "sim_failure",                       "SIM failure"},
    {CmeError::sim_busy,                          "sim_busy",                          "SIM busy"},
    {CmeError::sim_wrong,                         "sim_wrong",                         "SIM wrong"},
    {CmeError::incorrect_password,                "incorrect_password",                "incorrect password"},
    {CmeError::sim_pin2_required,                 "sim_pin2_required",                 "SIM PIN2 required"},
    {CmeError::sim_puk2_required,                 "sim_puk2_required",                 "SIM PUK2 required"},
    {CmeError::memory_full,                       "memory_full",                       "memory full"},
    {CmeError::invalid_index,                     "invalid_index",                     "invalid index"},
    {CmeError::not_found,                         "not_found",                         "not found"},
    {CmeError::memory_failure,                    "memory_failure",                    "memory failure"},
    {CmeError::text_too_long,                     "text_too_long",                     "text string too long"},
    {CmeError::invalid_characters_in_text,        "invalid_characters_in_text",        "invalid characters in text string"},
    {CmeError::dial_string_too_long,              "dial_string_too_long",              "dial string too long"},
    {CmeError::invalid_characters_in_dial_string, "invalid_characters_in_dial_string", "invalid characters in dial string"},
    {CmeError::no_network_service,                "no_network_service",                "no network service"},
    {CmeError::network_timeout,                   "network_timeout",                   "network timeout"},
    {CmeError::network_not_allowed,               "network_not_allowed",               "network not allowed, emergency calls only"},
    {CmeError::network_pin_required,              "network_pin_required",              "network personalization PIN required"},
    {CmeError::network_puk_required,              "network_puk_required",              "network personalization PUK required"},
    {CmeError::incorrect_parameters,              "incorrect_parameters",              "incorrect parameters"},
    {CmeError::unknown,                           "unknown",                           "unknown error"},
    {CmeError::missing_apn,                       "missing_apn",                       "missing access point name"},
    {CmeError::phone_failure,                     "phone_failure",                     "modem failure"},
    {CmeError::no_connection_to_phone,            "no_connection_to_phone",            "no modem"},
    {CmeError::not_allowed,                       "not_allowed",                       "operation not allowed"},
    {CmeError::not_supported,                     "not_supported",                     "operation not supported"},
    {CmeError::phone_pin_required,                "phone_pin_required",                "SIM PIN required by the phone"},
    {CmeError::file_not_written,                  "file_not_written",                  "provider list not written"},
    {CmeError::search_running,                    "search_running",                    "search running"},
};
// clang-format on

// The row of a number, or nullptr.
constexpr const CmeErrorText *find_cme_error(int number)
{
    for (const CmeErrorText &row : cme_errors)
        if (static_cast<int>(row.error) == number)
            return &row;
    return nullptr;
}

} // namespace daemons

#endif
