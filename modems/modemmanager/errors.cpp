#include "errors.h"

#include <algorithm>
#include <iterator>

namespace modem_manager
{
namespace
{

using enum CmeError;

struct Row {
    std::string_view name;
    CmeError error;
};

constexpr std::string_view prefix = "org.freedesktop.ModemManager1.Error.";

// The modem's own errors have the names of 3GPP TS 27.007 and 27.005. Those that the daemons have
// no number for are `unknown`.
// clang-format off
constexpr Row modem_manager_errors[] = {
    {"MobileEquipment.PhoneFailure",              phone_failure},
    {"MobileEquipment.NoConnection",              no_connection_to_phone},
    {"MobileEquipment.NotAllowed",                not_allowed},
    {"MobileEquipment.NotSupported",              not_supported},
    {"MobileEquipment.PhSimPin",                  phone_pin_required},
    {"MobileEquipment.SimNotInserted",            sim_not_inserted},
    {"MobileEquipment.SimPin",                    sim_pin_required},
    {"MobileEquipment.SimPuk",                    sim_puk_required},
    {"MobileEquipment.SimFailure",                sim_failure},
    {"MobileEquipment.SimBusy",                   sim_busy},
    {"MobileEquipment.SimWrong",                  sim_wrong},
    {"MobileEquipment.IncorrectPassword",         incorrect_password},
    {"MobileEquipment.SimPin2",                   sim_pin2_required},
    {"MobileEquipment.SimPuk2",                   sim_puk2_required},
    {"MobileEquipment.MemoryFull",                memory_full},
    {"MobileEquipment.InvalidIndex",              invalid_index},
    {"MobileEquipment.NotFound",                  not_found},
    {"MobileEquipment.MemoryFailure",             memory_failure},
    {"MobileEquipment.TextTooLong",               text_too_long},
    {"MobileEquipment.InvalidChars",              invalid_characters_in_text},
    {"MobileEquipment.DialStringTooLong",         dial_string_too_long},
    {"MobileEquipment.DialStringInvalid",         invalid_characters_in_dial_string},
    {"MobileEquipment.NoNetwork",                 no_network_service},
    {"MobileEquipment.NetworkTimeout",            network_timeout},
    {"MobileEquipment.NetworkNotAllowed",         network_not_allowed},
    {"MobileEquipment.NetworkPin",                network_pin_required},
    {"MobileEquipment.NetworkPuk",                network_puk_required},
    {"MobileEquipment.IncorrectParameters",       incorrect_parameters},
    {"MobileEquipment.ImsiUnknownInHss",          network_not_allowed},
    {"MobileEquipment.IllegalUe",                 network_not_allowed},
    {"MobileEquipment.IllegalMs",                 network_not_allowed},
    {"MobileEquipment.IllegalMe",                 network_not_allowed},
    {"MobileEquipment.PsServicesNotAllowed",      network_not_allowed},
    {"MobileEquipment.GprsServicesNotAllowed",    network_not_allowed},
    {"MobileEquipment.PlmnNotAllowed",            network_not_allowed},
    {"MobileEquipment.AreaNotAllowed",            network_not_allowed},
    {"MobileEquipment.LocationNotAllowed",        network_not_allowed},
    {"MobileEquipment.RoamingNotAllowedInArea",   network_not_allowed},
    {"MobileEquipment.PsServicesNotAllowedInPlmn", network_not_allowed},
    {"MobileEquipment.OperatorDeterminedBarring", network_not_allowed},
    {"MobileEquipment.UserAuthenticationFailed",  network_not_allowed},
    {"MobileEquipment.PdpAuthFailure",            network_not_allowed},
    {"MobileEquipment.ServiceOptionNotSubscribed", network_not_allowed},
    {"MobileEquipment.NoCellsInArea",             no_network_service},
    {"MobileEquipment.ServiceOptionOutOfOrder",   no_network_service},
    {"MobileEquipment.NetworkFailureActivation",  no_network_service},
    {"MobileEquipment.NetworkFailureAttach",      no_network_service},
    {"MobileEquipment.RegularDeactivation",       no_network_service},
    {"MobileEquipment.InsufficientResources",     no_network_service},
    {"MobileEquipment.MissingOrUnknownApn",       missing_apn},
    {"MobileEquipment.RequestedApnNotSupported",  missing_apn},
    {"MobileEquipment.FeatureNotSupported",       not_supported},
    {"Message.MeFailure",                         phone_failure},
    {"Message.NotAllowed",                        not_allowed},
    {"Message.NotSupported",                      not_supported},
    {"Message.SimNotInserted",                    sim_not_inserted},
    {"Message.SimPin",                            sim_pin_required},
    {"Message.SimFailure",                        sim_failure},
    {"Message.SimBusy",                           sim_busy},
    {"Message.SimWrong",                          sim_wrong},
    {"Message.SimPuk",                            sim_puk_required},
    {"Message.MemoryFailure",                     memory_failure},
    {"Message.InvalidIndex",                      invalid_index},
    {"Message.MemoryFull",                        memory_full},
    {"Message.NoNetwork",                         no_network_service},
    {"Message.NetworkTimeout",                    network_timeout},
    {"Core.Cancelled",                            no_connection_to_phone},
    {"Core.Aborted",                              no_connection_to_phone},
    {"Core.Unsupported",                          not_supported},
    {"Core.Unauthorized",                         not_allowed},
    {"Core.InvalidArgs",                          incorrect_parameters},
    {"Core.InProgress",                           not_allowed},
    {"Core.WrongState",                           not_allowed},
    {"Core.Connected",                            not_allowed},
    {"Core.TooMany",                              not_allowed},
    {"Core.NotFound",                             not_found},
    {"Core.Retry",                                not_allowed},
    {"Core.WrongSimState",                        sim_failure},
    {"Serial.OpenFailed",                         phone_failure},
    {"Serial.SendFailed",                         phone_failure},
    {"Serial.ResponseTimeout",                    phone_failure},
    {"Serial.OpenFailedNoDevice",                 no_connection_to_phone},
    {"Serial.NotOpen",                            no_connection_to_phone},
    {"Connection.NoCarrier",                      no_network_service},
    {"Connection.NoDialtone",                     no_network_service},
};

// An object or a service that is gone is a modem that is gone; a method that is missing is one that
// this version, or this modem, does not have.
constexpr Row dbus_errors[] = {
    {"org.freedesktop.DBus.Error.ServiceUnknown",   no_connection_to_phone},
    {"org.freedesktop.DBus.Error.NameHasNoOwner",   no_connection_to_phone},
    {"org.freedesktop.DBus.Error.NoReply",          no_connection_to_phone},
    {"org.freedesktop.DBus.Error.Disconnected",     no_connection_to_phone},
    {"org.freedesktop.DBus.Error.UnknownObject",    no_connection_to_phone},
    {"org.freedesktop.DBus.Error.UnknownMethod",    not_supported},
    {"org.freedesktop.DBus.Error.UnknownInterface", not_supported},
    {"org.freedesktop.DBus.Error.NotSupported",     not_supported},
    {"org.freedesktop.DBus.Error.AccessDenied",     not_allowed},
    {"org.freedesktop.DBus.Error.AuthFailed",       not_allowed},
    {"org.freedesktop.DBus.Error.InvalidArgs",      incorrect_parameters},
    {"org.freedesktop.DBus.Error.Timeout",          phone_failure},
    {"org.freedesktop.DBus.Error.TimedOut",         phone_failure},
};
// clang-format on

template <std::size_t size>
CmeError look_up(const Row (&rows)[size], std::string_view name)
{
    const auto *const row = std::find_if(std::begin(rows), std::end(rows),
                                         [&](const Row &each) { return each.name == name; });
    return row == std::end(rows) ? unknown : row->error;
}

} // namespace

CmeError error_of(std::string_view name)
{
    if (name.starts_with(prefix))
        return look_up(modem_manager_errors, name.substr(prefix.size()));
    return look_up(dbus_errors, name);
}

CmeError error_of(const GError &error)
{
    if (const TextPtr name(g_dbus_error_get_remote_error(&error)); name)
        return error_of(std::string_view(name.get()));
    if (error.domain == G_IO_ERROR && error.code == G_IO_ERROR_TIMED_OUT)
        return phone_failure;
    return no_connection_to_phone; // cancelled, or the bus is gone
}

bool is_denial(std::string_view name)
{
    return name == "org.freedesktop.DBus.Error.AccessDenied" ||
           name == "org.freedesktop.DBus.Error.AuthFailed" ||
           name == "org.freedesktop.ModemManager1.Error.Core.Unauthorized";
}

} // namespace modem_manager
