#include "at_verbs.h"

#include "daemons/publish/provider_file.h"
#include "digits.h"
#include "pdp_type.h"

#include <ctime>

namespace daemons
{
namespace
{

// A number of the enumeration's, out of those that the request knows.
template <class Value>
std::optional<Value> one_of(const std::string &text, std::initializer_list<Value> values)
{
    const std::optional<int> number = to_number(text);
    for (const Value value : values)
        if (number == static_cast<int>(value))
            return value;
    return std::nullopt;
}

std::optional<bool> on_or_off(const std::string &text)
{
    return one_of(text, {false, true});
}

} // namespace

CmeError set_time_zone(AtFront &front, const AtArguments &)
{
    tzset(); // the system's zone may have changed since the last time
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    if (!localtime_r(&now, &local))
        return CmeError::unknown;
    return front.modem.set_time_zone(static_cast<int>(local.tm_gmtoff / (15L * 60)));
}

CmeError set_search_mode(AtFront &front, const AtArguments &arguments)
{
    using enum SearchMode;
    const auto mode = one_of(arguments[0], {any, gsm_only, utran_only, eutran_only});
    return mode ? front.modem.set_search_mode(*mode) : CmeError::incorrect_parameters;
}

CmeError select_automatically(AtFront &front, const AtArguments &arguments)
{
    if (arguments[0] != "0")
        return CmeError::incorrect_parameters;
    return front.modem.select_automatically();
}

CmeError refresh_pin_counters(AtFront &front, const AtArguments &)
{
    return front.modem.refresh(StatusPart::pin_counters);
}

CmeError refresh_packet_domain(AtFront &front, const AtArguments &)
{
    return front.modem.refresh(StatusPart::packet_domain);
}

CmeError set_packet_domain(AtFront &front, const AtArguments &arguments)
{
    const auto on = on_or_off(arguments[0]);
    return on ? front.modem.set_packet_domain(*on) : CmeError::incorrect_parameters;
}

CmeError refresh_pin_mode(AtFront &front, const AtArguments &)
{
    return front.modem.refresh(StatusPart::pin_mode);
}

CmeError set_pin_mode(AtFront &front, const AtArguments &arguments)
{
    const auto enabled = on_or_off(arguments[0]);
    if (!enabled)
        return CmeError::incorrect_parameters;
    return front.modem.set_pin_enabled(*enabled, arguments[1]);
}

CmeError lock_network(AtFront &front, const AtArguments &arguments)
{
    const std::string &facility = arguments[0], &mode = arguments[1];
    const std::string &network = arguments[2], &key = arguments[3];
    if (facility != "PN")
        return CmeError::not_supported;
    if (mode == "0")
        return front.modem.unlock_network(key);
    if (mode != "1" || !(network.empty() || is_plmn_code(network)))
        return CmeError::incorrect_parameters;
    return front.modem.lock_network(network, key);
}

CmeError unlock_network(AtFront &front, const AtArguments &arguments)
{
    return front.modem.unlock_network(arguments[0]);
}

CmeError enter_pin(AtFront &front, const AtArguments &arguments)
{
    return front.modem.enter_pin(arguments[0]);
}

CmeError change_pin(AtFront &front, const AtArguments &arguments)
{
    return front.modem.change_pin(arguments[0], arguments[1]);
}

CmeError enter_puk(AtFront &front, const AtArguments &arguments)
{
    return front.modem.enter_puk(arguments[0], arguments[1]);
}

CmeError set_roaming(AtFront &front, const AtArguments &arguments)
{
    const auto roaming = one_of(arguments[0], {Roaming::off, Roaming::on, Roaming::automatic});
    return roaming ? front.modem.set_roaming(*roaming) : CmeError::incorrect_parameters;
}

// The modem gives all three names; which one is published is the daemons' own setting.
CmeError set_operator_format(AtFront &front, const AtArguments &arguments)
{
    using enum OperatorFormat;
    const auto format = one_of(arguments[0], {long_name, short_name, numeric});
    if (!format)
        return CmeError::incorrect_parameters;
    front.publisher.set_operator_format(*format);
    return CmeError::ok;
}

CmeError select_operator(AtFront &front, const AtArguments &arguments)
{
    const std::string &numeric = arguments[0], &technology = arguments[1];
    if (!is_plmn_code(numeric))
        return CmeError::incorrect_parameters;
    if (technology.empty())
        return front.modem.select_operator(numeric, std::nullopt);
    const std::optional<int> number = to_number(technology);
    if (!number || *number < 0 || *number > static_cast<int>(Technology::eutran))
        return CmeError::incorrect_parameters;
    return front.modem.select_operator(numeric, static_cast<Technology>(*number));
}

CmeError list_messages(AtFront &front, const AtArguments &)
{
    return front.modem.list_messages();
}

CmeError delete_messages(AtFront &front, const AtArguments &arguments)
{
    using enum DeleteFlag;
    const std::optional<int> index = to_number(arguments[0]);
    const auto flag = one_of(arguments[1], {one, read, read_sent, read_sent_unsent, all});
    if (!index || !flag)
        return CmeError::incorrect_parameters;
    return front.modem.delete_messages(*index, *flag);
}

CmeError factory_reset(AtFront &front, const AtArguments &)
{
    const CmeError error = front.modem.factory_reset();
    if (error != CmeError::ok)
        return error;
    front.publisher.set_operator_format(OperatorFormat::long_name);
    front.list_not_written = false;
    remove_provider_file();
    return CmeError::ok;
}

CmeError set_functionality(AtFront &front, const AtArguments &arguments)
{
    const std::optional<int> level = to_number(arguments[0]);
    return level ? front.modem.set_functionality(*level) : CmeError::incorrect_parameters;
}

CmeError get_search_state(AtFront &front, const AtArguments &)
{
    if (front.searches > 0)
        return CmeError::search_running;
    const CmeError last = front.modem.status().search;
    return last == CmeError::ok && front.list_not_written ? CmeError::file_not_written : last;
}

CmeError search(AtFront &front, const AtArguments &)
{
    std::vector<Operator> found;
    const CmeError error = front.modem.search(found);
    if (error != CmeError::ok)
        return error;
    front.list_not_written = !write_provider_file(found);
    return front.list_not_written ? CmeError::file_not_written : CmeError::ok;
}

CmeError set_profile(AtFront &front, const AtArguments &arguments)
{
    const std::optional<int> number = to_number(arguments[0]);
    const std::optional<PdpType> type = pdp_type_of(arguments[1]);
    if (!number || !type)
        return CmeError::incorrect_parameters;
    return front.modem.set_profile(*number, {*type, arguments[2]});
}

CmeError start_device_management(AtFront &front, const AtArguments &)
{
    return front.modem.start_device_management();
}

CmeError synchronize_profile(AtFront &front, const AtArguments &)
{
    return front.modem.synchronize_profile();
}

} // namespace daemons
