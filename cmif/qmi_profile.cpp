// QMI calls: the connection profile, and the rule of automatic APN selection.
#include "qmi_channel.h"
#include "qmi_lines.h"
#include "store.h"

#include <cstdio>
#include <cstdlib>

static_assert(sizeof(qmi_profile) == 312 && offsetof(qmi_profile, user) == 41);
static_assert(offsetof(qmi_profile, password) == 170 && offsetof(qmi_profile, auth) == 300);
static_assert(offsetof(qmi_profile, pdp) == 304 && offsetof(qmi_profile, curIpFamily) == 308);

namespace cmif
{
namespace
{

constexpr char modify_api[] = "shared_CMIF_modify_profile_settings";
constexpr char status_key[] = "lte_qmi_connection_status";
constexpr char auto_apn_key[] = "lte_set_auto_apn";

// The profile as it travels: texts, and numbers as single digits.
struct WireProfile {
    char apn[41];
    char user[129];
    char password[129];
    char auth[4];
    char pdp[4];
    char curIpFamily[4];
    char unused;
};
static_assert(sizeof(WireProfile) == CMIF_QMI_PAYLOAD && offsetof(WireProfile, auth) == 299);

void run(const char *format, const char *step)
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

// The marker that others wait for: there for as long as a modification runs, gone at every return.
class BusyMarker
{
public:
    BusyMarker() { run("echo 1 > %s", "shared_CMIF_write_modify_profile_in_progress"); }
    ~BusyMarker() { run("rm %s", "shared_CMIF_remove_modify_profile_in_progress"); }
    BusyMarker(const BusyMarker &) = delete;
    BusyMarker &operator=(const BusyMarker &) = delete;
};

// Both fields have the size of the longest text and a NUL; a profile's need not be terminated.
template <std::size_t size>
bool put_text(char (&out)[size], const char (&text)[size], const char *name)
{
    constexpr int longest = size - 1;
    const std::size_t length = strnlen(text, size);
    if (length == size) {
        qmi_say("%s %s length is larger than %d\n", modify_api, name, longest);
        return false;
    }
    std::memcpy(out, text, length);
    return true;
}

// A wrong number is corrected, not refused.
void put_digit(char (&out)[4], int value, unsigned largest, const char *name)
{
    out[0] = '0';
    if (static_cast<unsigned>(value) <= largest)
        out[0] = static_cast<char>('0' + value);
    else
        std::printf("%s wrong %s value, set default %s == 0\n", modify_api, name, name);
}

bool put_profile(WireProfile &wire, const qmi_profile &profile)
{
    if (!put_text(wire.apn, profile.apn, "apn"))
        return false;
    if (!put_text(wire.user, profile.user, "user"))
        return false;
    if (!put_text(wire.password, profile.password, "password"))
        return false;
    put_digit(wire.auth, profile.auth, 3, "auth");
    put_digit(wire.pdp, profile.pdp, 3, "pdp");
    put_digit(wire.curIpFamily, profile.curIpFamily, 1, "curIpFamily");
    return true;
}

// Automatic selection changes the APN until one is on record, and after that only back to that one
// while there is no connection.
bool auto_apn_allows(const char *apn)
{
    const StoredText<50> status(status_key);
    if (!status.is("3") && tarnNvramConfig_match(auto_apn_key, apn)) {
        // "not empty" though equality is what was tested: the text is known to log readers.
        qmi_say("%s action: lte_set_auto_apn is not empty. Connection status is %s and apn is %s\n",
                modify_api, status.text(), apn);
        return true;
    }
    if (tarnNvramConfig_match(auto_apn_key, ""))
        return true;
    qmi_say("%s action: Ignore modify profile for auto apn. Connection status is %s set apn is %s "
            "and apn in nvram is %s\n",
            modify_api, status.text(), apn, tarnNvramConfig_get(auto_apn_key));
    return false;
}

int modify(const qmi_profile &profile, bool from_auto_apn)
{
    const BusyMarker marker;
    if (_check_msg_thread_ready() != 0)
        return CMIF_NOT_READY;

    QmiRecord record(3);
    WireProfile wire{};
    if (!put_profile(wire, profile))
        return CMIF_INVALID;
    if (from_auto_apn && !auto_apn_allows(wire.apn))
        return CMIF_OK;
    std::memcpy(record.message.payload, &wire, sizeof wire);
    if (const int result = cmif_send_to_msgqueue(record, sizeof wire, 3); result != CMIF_OK)
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
    // In clear: support scripts read it here. Keep the switch off where others see the output.
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
