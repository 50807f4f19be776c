#include "connection_keys.h"

#include "cmif/cmif.h"
#include "daemons/digits.h"
#include "daemons/pdp_type.h"
#include "publish_value.h"

namespace daemons
{
namespace
{

constexpr const char *default_wait_time = "5"; // seconds

// `size` is that of the field with the text's NUL.
std::string stored_text(const char *key, std::size_t size)
{
    std::string text = tarnNvramConfig_get(key);
    return text.size() < size ? text : "";
}

template <class Enumeration>
Enumeration stored_number(const char *key, Enumeration max)
{
    const int number = to_number(tarnNvramConfig_get(key)).value_or(0);
    return number >= 0 && number <= static_cast<int>(max) ? Enumeration(number) : Enumeration(0);
}

template <class Enumeration>
void publish_number(const char *key, Enumeration value)
{
    publish_value(key, std::to_string(static_cast<int>(value)));
}

void publish_profile(const DataProfile &profile)
{
    publish_value("lte_qmi_apn", profile.apn);
    publish_value("lte_qmi_user", profile.user);
    publish_value("lte_qmi_password", profile.password);
    publish_number("lte_qmi_auth", profile.authentication);
    publish_number("lte_qmi_pdp", profile.pdp_type);
    publish_number("lte_qmi_cur_ip_family", profile.family);
}

// "" for none.
std::string error_name(CmeError error)
{
    const CmeErrorText *row = find_cme_error(static_cast<int>(error));
    return row && error != CmeError::ok ? row->name : "";
}

} // namespace

DataProfile stored_profile()
{
    return {stored_text("lte_qmi_apn", sizeof(qmi_profile_payload::apn)),
            stored_text("lte_qmi_user", sizeof(qmi_profile_payload::user)),
            stored_text("lte_qmi_password", sizeof(qmi_profile_payload::password)),
            stored_number("lte_qmi_auth", Authentication::pap_or_chap),
            stored_number("lte_qmi_pdp", PdpType::ipv4v6),
            stored_number("lte_qmi_cur_ip_family", IpFamily::ipv6)};
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

// The state comes last: a reader that waits for it sees all that belongs to it.
void publish_connection(const ModemStatus &status)
{
    publish_profile(status.data_profile);
    publish_value("lte_pdp_type", status.pdp_type ? name_of(*status.pdp_type) : "");
    publish_value("lte_pdp_apn", status.pdp_apn);
    publish_value("lte_pdp_last_apn", status.last_apn);
    publish_value("lte_ipv4_address", status.ipv4_address);
    publish_value("lte_ipv6_address", status.ipv6_address);
    publish_value("lte_qmi_connection_uptime", status.uptime ? std::to_string(*status.uptime) : "");
    publish_value("lte_qmi_last_error", error_name(status.last_error));
    publish_value("lte_qmi_connection_status",
                  status.connection ? std::to_string(static_cast<int>(*status.connection)) : "");
}

} // namespace daemons
