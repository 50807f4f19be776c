// Short messages in PDU mode (3GPP TS 27.005).
#include "command.h"
#include "message_places.h"
#include "sms_pdu.h"

namespace at_front
{
namespace
{

using daemons::Message;
using simulated::Needs;

// Of 3GPP TS 27.005.
constexpr int sim_not_inserted = 310, sim_pin_required = 311, sim_failure = 313,
              sim_puk_required = 316, not_supported = 303, invalid_pdu = 304,
              invalid_memory_index = 321, no_network_service = 331;

// 0 when messages can be read.
int refusal(Call &call, Needs needs)
{
    switch (
        call.device.look([needs](const ModemState &state, Time) { return state.refusal(needs); })) {
    case CmeError::ok:
        return 0;
    case CmeError::sim_not_inserted:
        return sim_not_inserted;
    case CmeError::sim_pin_required:
        return sim_pin_required;
    case CmeError::sim_puk_required:
        return sim_puk_required;
    case CmeError::no_network_service:
        return no_network_service;
    default:
        return sim_failure;
    }
}

std::vector<Message> messages(const Call &call)
{
    return call.device.look([](const ModemState &state, Time) { return state.messages.all(); });
}

Answer read_format(Call &)
{
    return line("+CMGF: 0");
}

Answer set_format(Call &call)
{
    return call.given.number(0, 0) == 0 ? ok : message_error(not_supported);
}

Answer read_service(Call &call)
{
    return line("+CSMS: " + std::to_string(call.session.message_service) + ",1,1,0");
}

Answer set_service(Call &call)
{
    const auto service = call.given.number(0, 0, 0, 1);
    if (!service)
        return message_error(not_supported);
    call.session.message_service = *service;
    return line("+CSMS: 1,1,0");
}

std::string room(const Call &call)
{
    return std::to_string(messages(call).size()) + "," +
           std::to_string(simulated::Messages::capacity);
}

// All three uses have the one store of the SIM.
Answer read_storage(Call &call)
{
    if (const int reason = refusal(call, Needs::unlocked_sim); reason != 0)
        return message_error(reason);
    const std::string one = "\"SM\"," + room(call);
    return line("+CPMS: " + one + "," + one + "," + one);
}

Answer set_storage(Call &call)
{
    if (const int reason = refusal(call, Needs::unlocked_sim); reason != 0)
        return message_error(reason);
    for (std::size_t i = 0; i < call.given.count(); ++i)
        if (call.given.has(i) && call.given.text(i) != "SM")
            return message_error(not_supported);
    return line("+CPMS: " + room(call) + "," + room(call) + "," + room(call));
}

Answer read_indications(Call &call)
{
    std::string text;
    for (const int value : call.session.new_messages)
        text += (text.empty() ? "+CNMI: " : ",") + std::to_string(value);
    return line(text);
}

Answer set_indications(Call &call)
{
    constexpr int max[] = {2, 1, 3, 2, 1}; // broadcasts and reports never come
    int chosen[std::size(max)] = {};
    for (std::size_t i = 0; i < std::size(max); ++i) {
        const auto value = call.given.number(i, call.session.new_messages[i], 0, max[i]);
        if (!value)
            return message_error(not_supported);
        chosen[i] = *value;
    }
    std::copy(std::begin(chosen), std::end(chosen), call.session.new_messages);
    return ok;
}

Answer list(Call &call)
{
    constexpr int all = 4;
    const auto kind = call.given.number(0, 0, 0, all);
    if (!kind)
        return message_error(not_supported);
    if (const int reason = refusal(call, Needs::unlocked_sim); reason != 0)
        return message_error(reason);
    Answer answer;
    for (const Message &message : messages(call))
        if (*kind == all || *kind == status_of(message))
            for (const PlacedPdu &part : places_of(message)) {
                answer.lines.push_back("+CMGL: " + std::to_string(part.place) + "," +
                                       std::to_string(status_of(message)) + ",," +
                                       std::to_string(part.pdu.length));
                answer.lines.push_back(part.pdu.digits);
            }
    call.device.change([](ModemState &state, Time) {
        state.messages.mark_all_read();
        return CmeError::ok;
    });
    return answer;
}

Answer read_message(Call &call)
{
    if (const int reason = refusal(call, Needs::unlocked_sim); reason != 0)
        return message_error(reason);
    const int place = call.given.number(0).value_or(0);
    for (const Message &message : messages(call))
        for (const PlacedPdu &part : places_of(message)) {
            if (part.place != place)
                continue;
            call.device.change([&message](ModemState &state, Time) {
                state.messages.mark_read(message.index);
                return CmeError::ok;
            });
            return {{"+CMGR: " + std::to_string(status_of(message)) + ",," +
                         std::to_string(part.pdu.length),
                     part.pdu.digits}};
        }
    return message_error(invalid_memory_index);
}

Answer delete_message(Call &call)
{
    const auto place = call.given.number(0), flag = call.given.number(1, 0, 0, 4);
    if (!place || !flag)
        return message_error(invalid_memory_index);
    if (const int reason = refusal(call, Needs::unlocked_sim); reason != 0)
        return message_error(reason);
    if (*flag == 0 && is_further_part(*place))
        return ok; // it goes with the first one
    const CmeError result =
        call.device.modem().delete_messages(*place, static_cast<daemons::DeleteFlag>(*flag));
    return result == CmeError::ok ? ok : message_error(invalid_memory_index);
}

Answer show_centre(Call &)
{
    return line(R"(+CSCA: "+12025550190",145)");
}

Answer send(Call &call)
{
    const auto length = call.given.number(0);
    if (!length || *length <= 0)
        return message_error(invalid_pdu);
    call.session.message_length = *length;
    return {{}, Ending::prompt};
}

// clang-format off
constexpr Command rows[] = {
    // name    test                                      read              set              execute
    {"+CMGF", "(0)",                                    read_format,      set_format,      nullptr},
    {"+CSMS", "(0,1)",                                  read_service,     set_service,     nullptr},
    {"+CPMS", R"(("SM"),("SM"),("SM"))",                read_storage,     set_storage,     nullptr},
    {"+CNMI", "(0-2),(0,1),(0-3),(0-2),(0,1)",          read_indications, set_indications, nullptr},
    {"+CMGL", "(0-4)",                                  nullptr,          list,            list},
    {"+CMGR", "",                                       nullptr,          read_message,    nullptr},
    {"+CMGD", "(1-255),(0-4)",                          nullptr,          delete_message,  nullptr},
    {"+CSCA", "",                                       show_centre,      nullptr,         nullptr},
    {"+CMGS", "",                                       nullptr,          send,            nullptr},
};
// clang-format on

} // namespace

Commands message_commands()
{
    return rows;
}

// A message to this SIM's own number arrives; others go nowhere.
Answer send_message(Call &call, std::string_view pdu)
{
    const auto sent = parse_submit(pdu, call.session.message_length);
    if (!sent)
        return message_error(invalid_pdu);
    if (const int reason = refusal(call, Needs::network); reason != 0)
        return message_error(reason);
    call.device.change([&sent](ModemState &state, Time now) {
        const std::string own = state.sim.identity.subscriber_number;
        if (sent->recipient == own)
            state.receive_message(own, sent->text, now);
        return CmeError::ok;
    });
    return line("+CMGS: 0");
}

} // namespace at_front
