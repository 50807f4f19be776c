// Short messages (3GPP TS 27.005).
#include "command.h"
#include "message_parts.h"
#include "sms_pdu.h"

#include <algorithm>

namespace at_front
{
namespace
{

using daemons::Message;
using simulated::Needs;

// Of 3GPP TS 27.005.
constexpr int sim_not_inserted = 310, sim_pin_required = 311, sim_failure = 313,
              sim_puk_required = 316, not_supported = 303, invalid_pdu = 304,
              invalid_text_parameter = 305, invalid_memory_index = 321, no_network_service = 331;

// 0 when messages can be read.
int refusal(Call &call, Needs needs)
{
    switch (call.device.inspect(
        [needs](const ModemState &state, Time) { return state.refusal(needs); })) {
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
    return call.device.inspect([](const ModemState &state, Time) { return state.messages.all(); });
}

Answer read_format(Call &call)
{
    return line("+CMGF: " + std::to_string(static_cast<int>(call.session.text_mode)));
}

Answer set_format(Call &call)
{
    return set_flag(call, call.session.text_mode);
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

// Which messages are meant: an index into the table of states.
std::optional<std::size_t> chosen_state(const Call &call)
{
    if (!call.session.text_mode)
        return call.given.number(0, 0, 0, message_states.size() - 1);
    if (!call.given.has(0))
        return 0;
    const auto *found = std::find(message_states.begin(), message_states.end(), call.given.text(0));
    if (found == message_states.end())
        return std::nullopt;
    return found - message_states.begin();
}

Answer list(Call &call)
{
    const auto chosen = chosen_state(call);
    if (!chosen)
        return message_error(not_supported);
    if (const int reason = refusal(call, Needs::unlocked_sim); reason != 0)
        return message_error(reason);
    Answer answer;
    for (const Message &message : messages(call))
        if (message_states.at(*chosen) == "ALL" || *chosen == state_of(message))
            for (const Part &part : parts_of(message, call.session)) {
                answer.lines.push_back("+CMGL: " + std::to_string(part.index) + "," + part.header);
                answer.lines.push_back(part.content);
            }
    call.device.change([](ModemState &state, Time) {
        state.messages.mark_all_read();
        return CmeError::ok;
    });
    return answer;
}

Answer list_states(Call &call)
{
    if (!call.session.text_mode)
        return line("+CMGL: (0-4)");
    std::string states;
    for (const std::string_view state : message_states)
        states.append(states.empty() ? "\"" : ",\"").append(state) += '"';
    return line("+CMGL: (" + states + ")");
}

Answer read_message(Call &call)
{
    if (const int reason = refusal(call, Needs::unlocked_sim); reason != 0)
        return message_error(reason);
    const int index = call.given.number(0).value_or(0);
    for (const Message &message : messages(call))
        for (const Part &part : parts_of(message, call.session)) {
            if (part.index != index)
                continue;
            call.device.change([&message](ModemState &state, Time) {
                state.messages.mark_read(message.index);
                return CmeError::ok;
            });
            return {{"+CMGR: " + part.header, part.content}};
        }
    return message_error(invalid_memory_index);
}

Answer delete_message(Call &call)
{
    const auto index = call.given.number(0), flag = call.given.number(1, 0, 0, 4);
    if (!index || !flag)
        return message_error(invalid_memory_index);
    if (const int reason = refusal(call, Needs::unlocked_sim); reason != 0)
        return message_error(reason);
    if (*flag == 0 && is_further_part(*index))
        return ok; // it goes with the first one
    const CmeError result =
        call.device.modem().delete_messages(*index, static_cast<daemons::DeleteFlag>(*flag));
    return result == CmeError::ok ? ok : message_error(invalid_memory_index);
}

Answer show_centre(Call &)
{
    return line(R"(+CSCA: "+12025550190",145)");
}

Answer send(Call &call)
{
    call.session.message_recipient = from_character_set(call.given.text(0), call.session);
    if (call.session.text_mode)
        return call.given.has(0) ? Answer{{}, Ending::prompt}
                                 : message_error(invalid_text_parameter);
    const auto length = call.given.number(0);
    if (!length || *length <= 0)
        return message_error(invalid_pdu);
    call.session.message_length = *length;
    return {{}, Ending::prompt};
}

// clang-format off
constexpr Command rows[] = {
    // name    test                                      read              set              execute
    {"+CMGF", "(0,1)",                                  read_format,      set_format,      nullptr},
    {"+CSMS", "(0,1)",                                  read_service,     set_service,     nullptr},
    {"+CPMS", R"(("SM"),("SM"),("SM"))",                read_storage,     set_storage,     nullptr},
    {"+CNMI", "(0-2),(0,1),(0-3),(0-2),(0,1)",          read_indications, set_indications, nullptr},
    {"+CMGL", nullptr,                                  nullptr,          list,            list, list_states},
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
Answer send_message(Call &call, const std::string &text)
{
    const Session &session = call.session;
    const auto sent = session.text_mode
                          ? Submitted{session.message_recipient, from_character_set(text, session)}
                          : parse_submit(text, session.message_length);
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
