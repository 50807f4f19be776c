// Names and numbers of ModemManager's D-Bus interface, version 1.20. They never change there.
#ifndef MODEMS_MODEMMANAGER_NAMES_H
#define MODEMS_MODEMMANAGER_NAMES_H

namespace modem_manager
{

// clang-format off
inline constexpr const char *service       = "org.freedesktop.ModemManager1";
inline constexpr const char *manager_path  = "/org/freedesktop/ModemManager1";
inline constexpr const char *properties    = "org.freedesktop.DBus.Properties";
inline constexpr const char *manager       = "org.freedesktop.DBus.ObjectManager";
inline constexpr const char *no_object     = "/";

inline constexpr const char *modem         = "org.freedesktop.ModemManager1.Modem";
inline constexpr const char *modem_3gpp    = "org.freedesktop.ModemManager1.Modem.Modem3gpp";
inline constexpr const char *profiles      = "org.freedesktop.ModemManager1.Modem.Modem3gpp.ProfileManager";
inline constexpr const char *signal_levels = "org.freedesktop.ModemManager1.Modem.Signal";
inline constexpr const char *location      = "org.freedesktop.ModemManager1.Modem.Location";
inline constexpr const char *messaging     = "org.freedesktop.ModemManager1.Modem.Messaging";
inline constexpr const char *simple        = "org.freedesktop.ModemManager1.Modem.Simple";
inline constexpr const char *oma           = "org.freedesktop.ModemManager1.Modem.Oma";
inline constexpr const char *sim_card      = "org.freedesktop.ModemManager1.Sim";
inline constexpr const char *bearer        = "org.freedesktop.ModemManager1.Bearer";
inline constexpr const char *sms           = "org.freedesktop.ModemManager1.Sms";

namespace state
{
inline constexpr int failed = -1, unknown = 0, initializing = 1, locked = 2, disabled = 3, disabling = 4,
                     enabling = 5, enabled = 6, searching = 7, registered = 8, disconnecting = 9, connecting = 10;
} // namespace state

namespace failed_reason
{
inline constexpr int sim_missing = 2, sim_error = 3, esim_without_profiles = 5;
} // namespace failed_reason

namespace lock
{
inline constexpr int unknown = 0, none = 1, sim_pin = 2, sim_pin2 = 3, sim_puk = 4, sim_puk2 = 5, network_pin = 8,
                     network_puk = 9;
inline constexpr int retries_unknown = 999;
} // namespace lock

namespace power
{
inline constexpr unsigned off = 1, low = 2, on = 3;
} // namespace power

namespace access
{
inline constexpr unsigned gsm = 1U << 1, gsm_compact = 1U << 2, gprs = 1U << 3, edge = 1U << 4, umts = 1U << 5,
                          hsdpa = 1U << 6, hsupa = 1U << 7, hspa = 1U << 8, hspa_plus = 1U << 9, lte = 1U << 14,
                          lte_cat_m = 1U << 16, lte_nb_iot = 1U << 17;
} // namespace access

namespace mode
{
inline constexpr unsigned none = 0, gsm = 1U << 1, umts = 1U << 2, lte = 1U << 3, any = 0xffffffff;
} // namespace mode

namespace facility
{
inline constexpr unsigned sim = 1U << 0, network = 1U << 4;
} // namespace facility

namespace packet_service
{
inline constexpr unsigned detached = 1, attached = 2;
} // namespace packet_service

namespace location_source
{
inline constexpr unsigned lac_and_cell = 1U << 0;
} // namespace location_source

namespace ip_family
{
inline constexpr unsigned ipv4 = 1U << 0, ipv6 = 1U << 1, ipv4v6 = 1U << 2;
} // namespace ip_family

namespace allowed_auth
{
inline constexpr unsigned none = 1U << 0, pap = 1U << 1, chap = 1U << 2;
} // namespace allowed_auth

namespace ip_method
{
inline constexpr int ppp = 1, fixed = 2, dhcp = 3;
} // namespace ip_method

namespace sms_state
{
inline constexpr int stored = 1, received = 3, sent = 5;
} // namespace sms_state

namespace cell_type
{
inline constexpr int gsm = 2, umts = 3, lte = 5;
} // namespace cell_type

namespace oma_session
{
inline constexpr unsigned device_configure = 10;
} // namespace oma_session

namespace oma_feature
{
inline constexpr unsigned device_provisioning = 1U << 0;
} // namespace oma_feature
// clang-format on

} // namespace modem_manager

#endif
