// What the daemons answer: 0, or why not.
//
// Numbers are those of +CME ERROR (3GPP TS 27.007) from 10 on. Those below 10 would be mistaken for
// the library's own results and are moved up by 200; from 220 on the numbers are ours.
#ifndef DAEMONS_RET_CODE_H
#define DAEMONS_RET_CODE_H

namespace sim
{

enum RetCode : int {
    ret_ok = 0,
    ret_sim_pin_required = 11,
    ret_sim_puk_required = 12,
    ret_sim_failure = 13,
    ret_incorrect_password = 16,
    ret_invalid_index = 21,
    ret_no_network_service = 30,
    ret_network_not_allowed = 32,
    ret_network_pin_required = 40,
    ret_incorrect_parameters = 50,
    ret_missing_apn = 127,
    ret_not_allowed = 203,
    ret_not_supported = 204,
    ret_file_not_written = 220,
    ret_search_running = 221,
};

struct RetCodeText {
    RetCode code;
    const char *name;
    const char *text;
};

inline constexpr RetCodeText ret_codes[] = {
    {ret_ok, "ok", "done"},
    {ret_sim_pin_required, "sim_pin_required", "the SIM asks for its PIN first"},
    {ret_sim_puk_required, "sim_puk_required", "the PIN is blocked; the SIM asks for its PUK"},
    {ret_sim_failure, "sim_failure", "the SIM is blocked for good"},
    {ret_incorrect_password, "incorrect_password",
     "wrong PIN, PUK or control key; one try is gone"},
    {ret_invalid_index, "invalid_index", "no message has this index"},
    {ret_no_network_service, "no_network_service", "not registered, or no such operator in reach"},
    {ret_network_not_allowed, "network_not_allowed",
     "the operator is forbidden, or roaming is off"},
    {ret_network_pin_required, "network_pin_required", "the modem is locked to another network"},
    {ret_incorrect_parameters, "incorrect_parameters", "a field is malformed or out of its range"},
    {ret_missing_apn, "missing_apn", "the connection profile has no access point name"},
    {ret_not_allowed, "not_allowed", "not in this state (radio off, PIN off, already so)"},
    {ret_not_supported, "not_supported", "no such request or facility"},
    {ret_file_not_written, "file_not_written", "the provider list could not be written"},
    {ret_search_running, "search_running", "a search for operators is going on"},
};

// The entry for `code`, or nullptr.
constexpr const RetCodeText *find_ret_code(int code)
{
    for (const RetCodeText &entry : ret_codes)
        if (entry.code == code)
            return &entry;
    return nullptr;
}

} // namespace sim

#endif
