// What a modem reports about itself: plain values, and those that its verbs take.
//
// Unknown is never a number: it is an empty optional or "", and published as "".
#ifndef DAEMONS_MODEM_STATUS_H
#define DAEMONS_MODEM_STATUS_H

#include "cme_error.h"

#include <optional>
#include <string>
#include <vector>

namespace daemons
{

enum class SimStatus {
    absent,
    not_ready,
    pin_required,
    puk_required,
    network_locked,
    permanently_blocked,
    ready
};

// The numbers are those of 3GPP TS 27.007: <stat> of +CREG, <AcT> and <stat> of +COPS.
enum class Registration { none = 0, home = 1, searching = 2, denied = 3, unknown = 4, roaming = 5 };
enum class Technology {
    gsm = 0,
    gsm_compact = 1,
    utran = 2,
    gsm_egprs = 3,
    utran_hsdpa = 4,
    utran_hsupa = 5,
    utran_hspa = 6,
    eutran = 7
};
enum class OperatorState { unknown = 0, available = 1, current = 2, forbidden = 3 };

// The numbers are those that travel in the requests and lie in the configuration store.
enum class SearchMode { any = 0, gsm_only = 1, utran_only = 2, eutran_only = 3 };
enum class Roaming { off = 1, on = 2, automatic = 255 };
enum class ConnectionState { disconnected = 1, transitioning = 2, connected = 3 };

// An operator that a search found.
struct Operator {
    OperatorState state = OperatorState::unknown;
    std::string long_name, short_name;
    std::string plmn; // MCC and MNC
    std::optional<Technology> technology;
};

struct Message {
    int index = 0; // its place in the modem's store, kept when others are deleted
    bool unread = false;
    std::string sender;
    std::string time; // service centre time stamp
    std::string text; // as the sender wrote it, UTF-8
};

// The delete flags of 3GPP TS 27.005: one message, or all of these kinds.
enum class DeleteFlag { one = 0, read = 1, read_sent = 2, read_sent_unsent = 3, all = 4 };

// A connection profile of the modem's own, as AT+CGDCONT keeps it.
enum class PdpType { ip, ppp, ipv6, ipv4v6 };
struct PdpProfile {
    PdpType type = PdpType::ip;
    std::string apn;
};

// The profile of the data connection.
enum class Authentication { none, pap, chap, pap_or_chap };
enum class IpFamily { ipv4, ipv6 };
struct DataProfile {
    std::string apn, user, password;
    Authentication authentication = Authentication::none;
    PdpType pdp_type = PdpType::ip;
    IpFamily family = IpFamily::ipv4;
};

struct Cell {
    std::string mcc, mnc; // decimal
    std::string lac;      // hexadecimal, and the tracking area code on LTE
    std::string cell_id;  // hexadecimal
};

// RSSI and RSRP in dBm, RSRQ and SINR in dB.
struct SignalStatus {
    std::optional<int> rssi;
    std::optional<int> csq_rssi; // RSSI in the coarse steps of AT+CSQ
    std::optional<int> rsrp, rsrq, sinr;
};

// Attempts left.
struct RetryCounters {
    std::optional<int> pin1, puk1, pin2, puk2;
};

struct ModemStatus {
    std::string hardware, firmware, imei;

    std::optional<SimStatus> sim;
    std::optional<bool> pin_enabled;
    RetryCounters attempts;
    std::string iccid, imsi, subscriber_number;

    std::optional<Registration> registration;
    Cell cell, last_cell; // the serving one; that one, or the last one when there is none
    std::string operator_long, operator_short;
    std::optional<Technology> technology;
    std::string duplex; // "FDD" or "TDD"
    std::string band, channel;
    SignalStatus signal;

    std::optional<bool> manual_selection;
    std::optional<SearchMode> search_mode;
    std::optional<Roaming> roaming;
    std::optional<bool> packet_domain;   // switched on
    std::optional<bool> packet_attached; // to a network
    CmeError search = CmeError::ok;      // how the last search that began went; search_running

    std::vector<Message> messages; // as last listed, or as the last deletion left them

    DataProfile data_profile;
    std::optional<ConnectionState> connection;
    std::optional<long long> uptime; // of the connection, in seconds
    CmeError last_error = CmeError::ok;
    std::string ipv4_address, ipv6_address;
    std::optional<PdpType> pdp_type; // of the context in use, or of the one to register with
    std::string pdp_apn, last_apn;
};

} // namespace daemons

#endif
