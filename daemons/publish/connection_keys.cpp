#include "connection_keys.h"

#include "cmif/cmif.h"
#include "daemons/digits.h"
#include "modems/simulated/modem.h"
#include "publish_value.h"

namespace sim
{

using namespace daemons;

namespace
{

constexpr const char *default_wait_time = "5"; // seconds

// `size` is that of the field with the text's end.
std::string stored_text(const char *key, std::size_t size)
{
    std::string text = tarnNvramConfig_get(key);
    return text.size() < size ? text : "";
}

int stored_number(const char *key, int most)
{
    const int number = to_number(tarnNvramConfig_get(key)).value_or(0);
    return number >= 0 && number <= most ? number : 0;
}

void publish_number(const char *key, long long number)
{
    publish_value(key, std::to_string(number));
}

void publish_profile(const ConnectionProfile &profile)
{
    publish_value("lte_qmi_apn", profile.apn);
    publish_value("lte_qmi_user", profile.user);
    publish_value("lte_qmi_password", profile.password);
    publish_number("lte_qmi_auth", profile.auth);
    publish_number("lte_qmi_pdp", profile.pdp);
    publish_number("lte_qmi_cur_ip_family", profile.family);
}

// "" for none, so that who looks for a reason finds one or nothing.
std::string error_name(RetCode code)
{
    return code == ret_ok ? "" : find_ret_code(code)->name;
}

} // namespace

ConnectionProfile stored_profile()
{
    return {stored_text("lte_qmi_apn", sizeof(qmi_profile::apn)),
            stored_text("lte_qmi_user", sizeof(qmi_profile::user)),
            stored_text("lte_qmi_password", sizeof(qmi_profile::password)),
            stored_number("lte_qmi_auth", 3),
            stored_number("lte_qmi_pdp", 3),
            stored_number("lte_qmi_cur_ip_family", 1)};
}

void prepare_wait_times()
{
    for (const char *key : {"lte_qmi_wait_time_before_restart", "lte_qmi_wait_time_after_restart"})
        if (tarnNvramConfig_match(key, ""))
            publish_value(key, default_wait_time);
}

bool auto_connect_is_on()
{
    return tarnNvramConfig_match("lte_qmi_auto_connect_when_start_up", "on") != 0;
}

// The state comes last: who waits for it finds all that belongs to it.
void publish_connection(const ModemState &state)
{
    const Connection &connection = state.connection;
    const PdpProfile pdp = state.pdp();
    publish_profile(connection.profile());
    publish_value("lte_pdp_type", pdp.type);
    publish_value("lte_pdp_apn", pdp.apn);
    publish_value("lte_pdp_last_apn", state.last_apn);
    publish_value("lte_ipv4_address", connection.ipv4_address());
    publish_value("lte_ipv6_address", connection.ipv6_address());
    publish_number("lte_qmi_connection_uptime", connection.uptime().count());
    publish_value("lte_qmi_last_error", error_name(connection.last_error()));
    publish_number("lte_qmi_connection_status", static_cast<int>(connection.state()));
}

} // namespace sim
