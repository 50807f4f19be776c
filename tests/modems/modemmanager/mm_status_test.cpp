// From ModemManager's properties to what the daemons publish.
#include "modems/modemmanager/abilities.h"
#include "modems/modemmanager/message_time.h"
#include "modems/modemmanager/status.h"
#include "stand_in.h"

namespace
{

using namespace modem_manager;
using daemons::ModemStatus;
using daemons::Registration;
using daemons::SearchMode;
using daemons::SimStatus;
using daemons::Technology;
using stand_in::modem_path;
using stand_in::values;

// Of a modem with these properties; 3GPP and location properties are optional.
ModemStatus status_with(const std::string &of_modem, const std::string &of_3gpp = "",
                        const std::string &of_location = "", const std::string &of_signal = "")
{
    Objects objects;
    objects[modem_path][modem] = values(of_modem);
    if (!of_3gpp.empty())
        objects[modem_path][modem_3gpp] = values(of_3gpp);
    if (!of_location.empty())
        objects[modem_path][location] = values(of_location);
    if (!of_signal.empty())
        objects[modem_path][signal_levels] = values(of_signal);
    return status_of(ModemView(objects, modem_path), {});
}

TEST(MmStatus, UnknownIsEmpty)
{
    const ModemStatus status = status_with("{'State': <0>}");
    EXPECT_EQ(status.hardware + status.firmware + status.imei + status.iccid + status.imsi, "");
    EXPECT_EQ(status.sim, std::nullopt);
    EXPECT_EQ(status.pin_enabled, std::nullopt);
    EXPECT_EQ(status.attempts.pin1, std::nullopt);
    EXPECT_EQ(status.registration, std::nullopt);
    EXPECT_EQ(status.technology, std::nullopt);
    EXPECT_EQ(status.search_mode, std::nullopt);
    EXPECT_EQ(status.manual_selection, std::nullopt);
    EXPECT_EQ(status.packet_domain, std::nullopt);
    EXPECT_EQ(status.packet_attached, std::nullopt);
    EXPECT_EQ(status.signal.rssi, std::nullopt);
    EXPECT_EQ(status.pdp_type, std::nullopt);
    EXPECT_EQ(status.cell.mcc + status.cell.lac + status.band + status.channel, "");
}

TEST(MmStatus, OfTheSim)
{
    const struct {
        const char *properties;
        std::optional<SimStatus> sim;
    } rows[] = {
        {"{'State': <2>, 'UnlockRequired': <uint32 2>}", SimStatus::pin_required},
        {"{'State': <2>, 'UnlockRequired': <uint32 4>}", SimStatus::puk_required},
        {"{'State': <2>, 'UnlockRequired': <uint32 4>, 'UnlockRetries': <{uint32 4: uint32 3}>}",
         SimStatus::puk_required},
        {"{'State': <2>, 'UnlockRequired': <uint32 4>, 'UnlockRetries': <{uint32 4: uint32 0}>}",
         SimStatus::permanently_blocked},
        {"{'State': <2>, 'UnlockRequired': <uint32 8>}", SimStatus::network_locked},
        {"{'State': <2>, 'UnlockRequired': <uint32 6>}", SimStatus::not_ready},
        {"{'State': <8>, 'UnlockRequired': <uint32 1>}", SimStatus::ready},
        {"{'State': <8>, 'UnlockRequired': <uint32 3>}", SimStatus::ready},
        {"{'State': <8>, 'UnlockRequired': <uint32 5>}", SimStatus::ready},
        {"{'State': <1>, 'UnlockRequired': <uint32 0>}", std::nullopt},
        {"{'State': <-1>, 'StateFailedReason': <uint32 2>}", SimStatus::absent},
        {"{'State': <-1>, 'StateFailedReason': <uint32 3>}", SimStatus::not_ready},
        {"{'State': <-1>, 'StateFailedReason': <uint32 1>}", std::nullopt},
    };
    for (const auto &[properties, sim] : rows)
        EXPECT_EQ(status_with(properties).sim, sim) << properties;
}

TEST(MmStatus, AttemptsThatModemManagerDoesNotKnow)
{
    const ModemStatus status =
        status_with("{'State': <2>, 'UnlockRequired': <uint32 2>, "
                    "'UnlockRetries': <{uint32 2: uint32 2, 4: 999, 5: 7}>}");
    EXPECT_EQ(status.attempts.pin1, 2);
    EXPECT_EQ(status.attempts.puk1, std::nullopt);
    EXPECT_EQ(status.attempts.pin2, std::nullopt);
    EXPECT_EQ(status.attempts.puk2, 7);
    EXPECT_EQ(status.pin_enabled, true);
}

TEST(MmStatus, Registrations)
{
    using enum Registration;
    const Registration expected[] = {none, home,    searching, denied, unknown, roaming,
                                     home, roaming, denied,    home,   roaming, denied};
    for (std::size_t i = 0; i < std::size(expected); ++i)
        EXPECT_EQ(status_with("{'State': <6>}",
                              "{'RegistrationState': <uint32 " + std::to_string(i) + ">}")
                      .registration,
                  expected[i])
            << i;
    EXPECT_EQ(status_with("{'State': <6>}", "{'RegistrationState': <uint32 12>}").registration,
              std::nullopt);
}

TEST(MmStatus, Technologies)
{
    const std::pair<unsigned, std::optional<Technology>> rows[] = {
        {0, std::nullopt},
        {1U << 1, Technology::gsm},
        {1U << 3, Technology::gsm},
        {1U << 2, Technology::gsm_compact},
        {1U << 4, Technology::gsm_egprs},
        {1U << 5, Technology::utran},
        {1U << 6, Technology::utran_hsdpa},
        {1U << 7, Technology::utran_hsupa},
        {3U << 6, Technology::utran_hspa},
        {1U << 8, Technology::utran_hspa},
        {1U << 9, Technology::utran_hspa},
        {1U << 14, Technology::eutran},
        {(1U << 14) | (1U << 15), Technology::eutran},
        {1U << 17, Technology::eutran},
    };
    for (const auto &[access, technology] : rows)
        EXPECT_EQ(status_with("{'AccessTechnologies': <uint32 " + std::to_string(access) + ">}",
                              "{'RegistrationState': <uint32 1>}")
                      .technology,
                  technology)
            << access;
}

TEST(MmStatus, SearchModes)
{
    const std::string supported = "'SupportedModes': <[(uint32 2, uint32 0), (14, 8), (8, 0)]>";
    const std::pair<const char *, std::optional<SearchMode>> rows[] = {
        {"(uint32 4294967295, uint32 0)", SearchMode::any},
        {"(uint32 14, uint32 8)", SearchMode::any},
        {"(uint32 2, uint32 0)", SearchMode::gsm_only},
        {"(uint32 4, uint32 0)", SearchMode::utran_only},
        {"(uint32 8, uint32 0)", SearchMode::eutran_only},
        {"(uint32 12, uint32 8)", std::nullopt},
    };
    for (const auto &[modes, expected] : rows)
        EXPECT_EQ(status_with("{" + supported + ", 'CurrentModes': <" + modes + ">}").search_mode,
                  expected)
            << modes;
}

TEST(MmStatus, TheServingCell)
{
    const std::string registered = "{'RegistrationState': <uint32 1>, 'OperatorCode': <'00101'>, "
                                   "'OperatorName': <'Test Network'>}";
    const auto cell = [&](unsigned access, const std::string &text) {
        return status_with("{'AccessTechnologies': <uint32 " + std::to_string(access) + ">}",
                           registered, "{'Location': <{uint32 1: <'" + text + "'>}>}")
            .cell;
    };
    const daemons::Cell on_lte = cell(1U << 14, "001,01,FFFE,1A2D003,1A2B");
    EXPECT_EQ(on_lte.mcc, "001");
    EXPECT_EQ(on_lte.mnc, "01");
    EXPECT_EQ(on_lte.lac, "1A2B");
    EXPECT_EQ(on_lte.cell_id, "01A2D003");
    const daemons::Cell on_umts = cell(1U << 5, "001,01,A2C,0011A2C7,0");
    EXPECT_EQ(on_umts.lac, "0A2C");
    EXPECT_EQ(on_umts.cell_id, "0011A2C7");
    EXPECT_EQ(cell(1U << 14, "001,01,FFFE,0,000000").lac, "");
    EXPECT_EQ(cell(1U << 14, "001,01,FFFE,0,000000").cell_id, "");
    EXPECT_EQ(cell(1U << 14, "").lac, "");
    EXPECT_EQ(cell(1U << 14, "001").cell_id, "");
}

TEST(MmStatus, WithoutANetworkNoCellAndNoSignal)
{
    const ModemStatus status =
        status_with("{'AccessTechnologies': <uint32 16384>, 'SignalQuality': <(uint32 50, true)>}",
                    "{'RegistrationState': <uint32 2>, 'OperatorCode': <'00101'>}",
                    "{'Location': <{uint32 1: <'001,01,1A2C,0011A2C7,1A2B'>}>}",
                    "{'Lte': <{'rsrp': <-92.0>}>}");
    EXPECT_EQ(status.cell.mcc, "");
    EXPECT_EQ(status.technology, std::nullopt);
    EXPECT_EQ(status.signal.csq_rssi, std::nullopt);
    EXPECT_EQ(status.signal.rsrp, std::nullopt);
}

TEST(MmStatus, SignalLevels)
{
    const std::string at_home = "{'RegistrationState': <uint32 1>}";
    const auto levels = [&](const std::string &percent, const std::string &measured) {
        return status_with("{'SignalQuality': <(uint32 " + percent + ", true)>}", at_home, "",
                           measured)
            .signal;
    };
    const daemons::SignalStatus lte = levels(
        "81", "{'Lte': <{'rssi': <-63.4>, 'rsrp': <-91.6>, 'rsrq': <-9.0>, 'snr': <15.2>}>}");
    EXPECT_EQ(lte.rssi, -63);
    EXPECT_EQ(lte.csq_rssi, -63);
    EXPECT_EQ(lte.rsrp, -92);
    EXPECT_EQ(lte.rsrq, -9);
    EXPECT_EQ(lte.sinr, 15);
    EXPECT_EQ(levels("100", "{'Umts': <{'rssi': <-75.0>}>}").rssi, -75);
    EXPECT_EQ(levels("100", "{'Umts': <{'rssi': <-75.0>}>}").csq_rssi, -51);
    EXPECT_EQ(levels("32", "{}").rssi, -93); // from the percentage alone
    EXPECT_EQ(levels("0", "{}").rssi, std::nullopt);
    EXPECT_EQ(levels("32", "{'Lte': <{'rsrp': <-1.7e308>}>}").rsrp, std::nullopt);
}

TEST(MmStatus, TheProfileToRegisterWith)
{
    const ModemStatus status =
        status_with("{'State': <8>, 'Bearers': <@ao []>}",
                    "{'InitialEpsBearerSettings': <{'apn': <'ims'>, 'ip-type': <uint32 4>}>}");
    EXPECT_EQ(status.pdp_apn, "ims");
    EXPECT_EQ(status.pdp_type, daemons::PdpType::ipv4v6);
    EXPECT_EQ(status.connection, daemons::ConnectionState::disconnected);
    EXPECT_EQ(status.uptime, 0);
}

TEST(MmAbilities, AreListedForEachRequest)
{
    std::string at, qmi;
    for (const Ability &each : abilities_of(ModemView({}, ""), false)) {
        EXPECT_NE(std::string(each.request), "");
        const bool is_at = each.channel == std::string("AT");
        EXPECT_TRUE(is_at || each.channel == std::string("QMI")) << each.channel;
        (is_at ? at : qmi) += std::to_string(each.code) + " ";
    }
    EXPECT_EQ(at, "1 2 3 4 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21 22 23 24 25 26 27 ");
    EXPECT_EQ(qmi, "1 3 4 5 6 8 9 ");
}

TEST(MmMessageTimes, AsAtCommandsShowThem)
{
    EXPECT_EQ(service_centre_time("2024-03-01T08:00:05+01:00"), "24/03/01,08:00:05+04");
    EXPECT_EQ(service_centre_time("2024-03-01T08:00:05+01"), "24/03/01,08:00:05+04");
    EXPECT_EQ(service_centre_time("2024-12-31T23:59:59-03:30"), "24/12/31,23:59:59-14");
    EXPECT_EQ(service_centre_time("2024-03-01T08:00:05Z"), "24/03/01,08:00:05+00");
    EXPECT_EQ(service_centre_time("2024-03-01T08:00:05"), "24/03/01,08:00:05+00");
    EXPECT_EQ(service_centre_time("soon"), "soon");
    EXPECT_EQ(service_centre_time(""), "");
}

TEST(MmErrors, HaveTheNumbersOfTheirNames)
{
    const std::string prefix = "org.freedesktop.ModemManager1.Error.";
    const std::pair<std::string, int> rows[] = {
        {prefix + "MobileEquipment.SimNotInserted", 10},
        {prefix + "MobileEquipment.SimPin", 11},
        {prefix + "MobileEquipment.SimPuk", 12},
        {prefix + "MobileEquipment.SimFailure", 13},
        {prefix + "MobileEquipment.SimBusy", 14},
        {prefix + "MobileEquipment.SimWrong", 15},
        {prefix + "MobileEquipment.IncorrectPassword", 16},
        {prefix + "MobileEquipment.MemoryFull", 20},
        {prefix + "MobileEquipment.InvalidIndex", 21},
        {prefix + "MobileEquipment.NotFound", 22},
        {prefix + "MobileEquipment.NoNetwork", 30},
        {prefix + "MobileEquipment.NetworkTimeout", 31},
        {prefix + "MobileEquipment.NetworkNotAllowed", 32},
        {prefix + "MobileEquipment.NetworkPin", 40},
        {prefix + "MobileEquipment.IncorrectParameters", 50},
        {prefix + "MobileEquipment.MissingOrUnknownApn", 127},
        {prefix + "MobileEquipment.NotAllowed", 203},
        {prefix + "MobileEquipment.NotSupported", 204},
        {prefix + "MobileEquipment.Unknown", 100},
        {prefix + "MobileEquipment.SomethingNew", 100},
        {prefix + "Message.InvalidIndex", 21},
        {prefix + "Core.Unsupported", 204},
        {prefix + "Core.WrongState", 203},
        {prefix + "Core.Failed", 100},
        {"org.freedesktop.DBus.Error.NoReply", 201},
        {"org.freedesktop.DBus.Error.UnknownMethod", 204},
        {"org.freedesktop.DBus.Error.AccessDenied", 203},
        {"com.example.Error", 100},
    };
    for (const auto &[name, number] : rows)
        EXPECT_EQ(static_cast<int>(error_of(std::string_view(name))), number) << name;
}

} // namespace
