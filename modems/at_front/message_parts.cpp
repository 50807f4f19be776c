#include "message_parts.h"

#include "modems/simulated/sms_text.h"
#include "sms_pdu.h"

namespace at_front
{
namespace
{

using daemons::Message;

std::vector<Part> pdu_parts(const Message &message)
{
    std::vector<Part> parts;
    for (Pdu &pdu : deliver_pdus(message, message.index))
        parts.push_back({0, std::to_string(state_of(message)) + ",," + std::to_string(pdu.length),
                         std::move(pdu.digits)});
    return parts;
}

std::vector<Part> text_parts(const Message &message, const Session &session)
{
    const std::string header = '"' + std::string(message_states.at(state_of(message))) + "\",\"" +
                               in_character_set(message.sender, session) + "\",,\"" + message.time +
                               '"';
    std::vector<Part> parts;
    for (const std::string &text : simulated::sms_parts(message.text))
        parts.push_back({0, header, in_character_set(text, session)});
    return parts;
}

// IRA has no other characters than ASCII.
std::string in_ascii(const std::string &utf8)
{
    std::string text;
    for (const char c : utf8) {
        const auto octet = static_cast<unsigned char>(c);
        if ((octet & 0xc0U) != 0x80)
            text += octet < 0x80 ? c : '?';
    }
    return text;
}

} // namespace

std::vector<Part> parts_of(const Message &message, const Session &session)
{
    std::vector<Part> parts = session.text_mode ? text_parts(message, session) : pdu_parts(message);
    int index = message.index;
    for (Part &part : parts) {
        part.index = index;
        index += index_step;
    }
    return parts;
}

std::string in_character_set(const std::string &utf8, const Session &session)
{
    if (session.character_set == "UCS2")
        return hexadecimal(ucs2_of(utf8));
    const auto septets = septets_of(utf8);
    if (session.character_set == "GSM" && septets)
        return {septets->begin(), septets->end()};
    return in_ascii(utf8);
}

std::string from_character_set(const std::string &text, const Session &session)
{
    if (session.character_set == "UCS2")
        return text_of_ucs2(octets_of(text).value_or(Octets{}));
    return session.character_set == "GSM" ? text_of_septets({text.begin(), text.end()}) : text;
}

} // namespace at_front
