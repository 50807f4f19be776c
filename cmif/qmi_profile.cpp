// QMI calls: the connection profile, and the rule of automatic APN selection.
#include "qmi_channel.h"
#include "qmi_lines.h"
#include "store.h"

#include <cstdio>
#include <cstdlib>

static_assert(sizeof(qmi_profile) == 312 && offsetof(qmi_profile, user) == 41);
static_assert(offsetof(qmi_profile, password) == 170 && offsetof(qmi_profile, auth) == 300);
static_assert(offsetof(qmi_profile, pdp) == 304 && offsetof(qmi_profile, curIpFamily) == 308);
static_assert(sizeof(qmi_profile_payload) == CMIF_QMI_PAYLOAD);
static_assert(offsetof(qmi_profile_payload, auth) == 299);

namespace cmif
{
namespace
{

constexpr char modify_api[] = "shared_CMIF_modify_profile_settings";
constexpr char status_key[] = "lte_qmi_connection_status";
constexpr char auto_apn_key[] = "lte_set_auto_apn";

void run_marker_command(const char *format, const char *step)
{
    char command[64] = {};
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral" // the two literals below
    std::snprintf(command, sizeof command, format, CMIF_PROFILE_BUSY_FILE);
#pragma GCC diagnostic pop
    [[maybe_unused]] const int status = std::system(command);
    std::printf("[CMIF]%s done\n", step);
    qmi_log("[%s] done\n", step);
}

// The marker file that other callers wait for: it exists while a modification runs, and every
// return removes it.
class BusyMarker
{
public:
    BusyMarker()
    {
        run_marker_command("echo 1 > %s", "shared_CMIF_write_modify_profile_in_progress");
    }
    ~BusyMarker() { run_marker_command("rm %s", "shared_CMIF_remove_modify_profile_in_progress"); }
    BusyMarker(const BusyMarker &) = delete;
    BusyMarker &operator=(const BusyMarker &) = delete;
};

// Both fields have room for the longest text and a NUL; the profile's need not be terminated.
template <std::size_t size>
bool set_text(char (&out)[size], const char (&text)[size], const char *name)
{
    constexpr int longest = size - 1;
    const std::size_t length = strnlen(text, size);
    if (length == size) {
        qmi_print_and_log("%s %s length is larger than %d\n", modify_api, name, longest);
        return false;
    }
    std::memcpy(out, text, length);
    return true;
}

// A number out of range is sent as 0.
void set_digit(char (&out)[4], int value, unsigned largest, const char *name)
{
    out[0] = '0';
    if (static_cast<unsigned>(value) <= largest)
        out[0] = static_cast<char>('0' + value);
    else
        std::printf("%s wrong %s value, set default %s == 0\n", modify_api, name, name);
}

bool set_profile(qmi_profile_payload &wire, const qmi_profile &profile)
{
    if (!set_text(wire.apn, profile.apn, "apn"))
        return false;
    if (!set_text(wire.user, profile.user, "user"))
        return false;
    if (!set_text(wire.password, profile.password, "password"))
        return false;
    set_digit(wire.auth, profile.auth, 3, "auth");
    set_digit(wire.pdp, profile.pdp, 3, "pdp");
    set_digit(wire.curIpFamily, profile.curIpFamily, 1, "curIpFamily");
    return true;
}

// Automatic selection may change the APN until one is recorded; after that it may set only that
// one, and only without a connection.
bool auto_apn_allows(const char *apn)
{
    const StoredText<50> status(status_key);
    if (!status.is("3") && tarnNvramConfig_match(auto_apn_key, apn)) {
        // Log parsers depend on "not empty", though the test is for equality.
        qmi_print_and_log(
            "%s action: lte_set_auto_apn is not empty. Connection status is %s and apn is %s\n",
            modify_api, status.text(), apn);
        return true;
    }
    if (tarnNvramConfig_match(auto_apn_key, ""))
        return true;
    qmi_print_and_log(
        "%s action: Ignore modify profile for auto apn. Connection status is %s set apn is %s "
        "and apn in nvram is %s\n",
        modify_api, status.text(), apn, tarnNvramConfig_get(auto_apn_key));
    return false;
}

int modify(const qmi_profile &profile, bool from_auto_apn)
{
    const BusyMarker marker;
    if (_check_msg_thread_ready() != 0)
        return CMIF_NOT_READY;

    QmiRecord record(CMIF_QMI_MODIFY_PROFILE);
    qmi_profile_payload wire{};
    if (!set_profile(wire, profile))
        return CMIF_INVALID;
    if (from_auto_apn && !auto_apn_allows(wire.apn))
        return CMIF_OK;
    std::memcpy(record.message.payload, &wire, sizeof wire);
    if (const int result = cmif_send_to_msgqueue(record, sizeof wire, CMIF_QMI_MODIFY_PROFILE);
        result != CMIF_OK)
        return result;

    if (_check_msg_thread_ready() != 0)
        return CMIF_OK;
    if (from_auto_apn && tarnNvramConfig_match(status_key, "3"))
        tarnNvramConfig_set(auto_apn_key, wire.apn);
    return CMIF_OK;
}

} // namespace
} // namespace cmif

using namespace cmif;

int shared_CMIF_get_profile_settings(qmi_profile *profile)
{
    static constexpr char name[] = "shared_CMIF_get_profile_settings";
    static constinit QmiSite apn_site, user_site, password_site, auth_site, pdp_site, family_site;
    cmif_log_caller(name);
    if (!profile)
        return CMIF_INVALID;

    const StoredText<sizeof profile->apn> apn("lte_qmi_apn");
    const StoredText<sizeof profile->user> user("lte_qmi_user");
    const StoredText<sizeof profile->password> password("lte_qmi_password");
    const StoredText<50> auth("lte_qmi_auth");
    const StoredText<50> pdp("lte_qmi_pdp");
    const StoredText<50> family("lte_qmi_cur_ip_family");

    apn_site.print("%s apn = %s\n\n", name, apn.text());
    user_site.print("%s user = %s\n\n", name, user.text());
    // In clear text: support scripts read it here. Turn the switch off where others see the output.
    password_site.print("%s password = %s\n\n", name, password.text());
    auth_site.print("%s auth = %s\n\n", name, auth.text());
    pdp_site.print("%s pdp = %s\n\n", name, pdp.text());
    family_site.print("%s curIpFamily = %s\n\n", name, family.text());

    std::memcpy(profile->apn, apn.text(), sizeof profile->apn);
    std::memcpy(profile->user, user.text(), sizeof profile->user);
    std::memcpy(profile->password, password.text(), sizeof profile->password);
    profile->auth = auth.number();
    profile->pdp = pdp.number();
    profile->curIpFamily = family.number();
    return CMIF_OK;
}

int shared_CMIF_modify_profile_settings(qmi_profile profile, int from_auto_apn)
{
    cmif_log_caller(modify_api);
    return modify(profile, from_auto_apn == 1);
}
