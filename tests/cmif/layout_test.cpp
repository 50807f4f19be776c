// The layout of every record of the header, for each compiler that builds the library: a daemon or
// a caller may have been built by another one. Columns for 32 and 64 bits; one number where they
// agree.
#include "cmif/cmif.h"

namespace
{
struct Bytes {
    constexpr Bytes(unsigned long everywhere) : on_32(everywhere), on_64(everywhere) {}
    constexpr Bytes(unsigned long bits_32, unsigned long bits_64) : on_32(bits_32), on_64(bits_64)
    {
    }
    [[nodiscard]] constexpr unsigned long here() const { return sizeof(long) == 4 ? on_32 : on_64; }

    unsigned long on_32, on_64;
};

// RECORD(type, size, members...): a record with other members, or more, does not compile.
#define RECORD(type, size, ...)                                                                    \
    static_assert(sizeof(type) == Bytes size.here());                                              \
    [[maybe_unused]] void members_of(const type &record)                                           \
    {                                                                                              \
        [[maybe_unused]] const auto &[__VA_ARGS__] = record;                                       \
    }

// FIELD(type, member, offset, size)
#define FIELD(type, member, offset, size)                                                          \
    static_assert(__builtin_offsetof(type, member) == Bytes offset.here());                        \
    static_assert(sizeof(type::member) == Bytes size.here())

// clang-format off
RECORD(cmif_msg, (120, 128), mod_id, string, string2, string3, value, code)
FIELD(cmif_msg, mod_id,                             (0),        (4, 8));
FIELD(cmif_msg, set_string,                         (4, 8),     (30));
FIELD(cmif_msg, set_string2,                        (34, 38),   (30));
FIELD(cmif_msg, set_string3,                        (64, 68),   (30));
FIELD(cmif_msg, set_value,                          (94, 98),   (22));
FIELD(cmif_msg, ret_code,                           (116, 120), (4));

RECORD(qmi_msg, (316, 320), mtype, payload)
FIELD(qmi_msg, mtype,                               (0),        (4, 8));
FIELD(qmi_msg, payload,                             (4, 8),     (312));

RECORD(qmi_profile_payload, (312), apn, user, password, auth, pdp, family, unused)
FIELD(qmi_profile_payload, apn,                     (0),        (41));
FIELD(qmi_profile_payload, user,                    (41),       (129));
FIELD(qmi_profile_payload, password,                (170),      (129));
FIELD(qmi_profile_payload, auth,                    (299),      (4));
FIELD(qmi_profile_payload, pdp,                     (303),      (4));
FIELD(qmi_profile_payload, curIpFamily,             (307),      (4));
FIELD(qmi_profile_payload, unused,                  (311),      (1));

RECORD(qmi_profile, (312), apn, user, password, auth, pdp, family)
FIELD(qmi_profile, apn,                             (0),        (41));
FIELD(qmi_profile, user,                            (41),       (129));
FIELD(qmi_profile, password,                        (170),      (129));
FIELD(qmi_profile, auth,                            (300),      (4));
FIELD(qmi_profile, pdp,                             (304),      (4));
FIELD(qmi_profile, curIpFamily,                     (308),      (4));

RECORD(WirelessBroadbandInfo, (184), identity, version, imsi, imei, name, mode, rssi, status, kind, number)
FIELD(WirelessBroadbandInfo, NewModemIdentity,      (0),        (20));
FIELD(WirelessBroadbandInfo, NewModemSWversion,     (20),       (20));
FIELD(WirelessBroadbandInfo, NewIMSI,               (40),       (20));
FIELD(WirelessBroadbandInfo, NewIMEI,               (60),       (20));
FIELD(WirelessBroadbandInfo, NewOperatorName,       (80),       (20));
FIELD(WirelessBroadbandInfo, NewNetworkMode,        (100),      (20));
FIELD(WirelessBroadbandInfo, NewRSSI,               (120),      (4));
FIELD(WirelessBroadbandInfo, NewModemCurrentStatus, (124),      (20));
FIELD(WirelessBroadbandInfo, NewModemType,          (144),      (20));
FIELD(WirelessBroadbandInfo, NewPhoneNumber,        (164),      (20));

RECORD(cmif_provider_info, (68), name, short_name, numeric, stat, act)
FIELD(cmif_provider_info, oper_long,                (0),        (20));
FIELD(cmif_provider_info, oper_short,               (20),       (20));
FIELD(cmif_provider_info, oper_numeric,             (40),       (20));
FIELD(cmif_provider_info, stat,                     (60),       (4));
FIELD(cmif_provider_info, act,                      (64),       (4));

RECORD(cmif_sms_info, (1100), id, stat, number, time, text)
FIELD(cmif_sms_info, id,                            (0),        (4));
FIELD(cmif_sms_info, stat,                          (4),        (1));
FIELD(cmif_sms_info, da,                            (5),        (20));
FIELD(cmif_sms_info, scts,                          (25),       (50));
FIELD(cmif_sms_info, text,                          (75),       (1024));
// clang-format on
} // namespace
