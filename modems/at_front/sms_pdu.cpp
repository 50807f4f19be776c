#include "sms_pdu.h"

#include "daemons/digits.h"
#include "modems/simulated/sms_text.h"

namespace at_front
{
namespace
{

constexpr std::uint8_t international = 0x91, national = 0x81, alphanumeric = 0xd0;
constexpr std::uint8_t gsm_coding = 0x00, ucs2_coding = 0x08;
constexpr std::uint8_t user_data_header = 0x40;
constexpr const char *service_centre = "+12025550190";

void append(Octets &octets, const Octets &more)
{
    octets.insert(octets.end(), more.begin(), more.end());
}

// Two digits in an octet, the first one low; 15 fills the last one.
Octets semi_octets(std::string_view digits)
{
    Octets octets;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        const auto low = static_cast<unsigned>(digits[i] - '0');
        const unsigned high =
            i + 1 < digits.size() ? static_cast<unsigned>(digits[i + 1] - '0') : 0xfU;
        octets.push_back(static_cast<std::uint8_t>(high << 4 | low));
    }
    return octets;
}

struct Address {
    std::uint8_t type;
    std::size_t semi_octets; // its length, without the filling
    Octets octets;
};

Address address_of(std::string_view text)
{
    const bool plus = text.starts_with('+');
    const std::string_view digits = text.substr(plus ? 1 : 0);
    if (daemons::is_digits(digits, 1, 20))
        return {plus ? international : national, digits.size(), semi_octets(digits)};
    const Octets septets = septets_of(text).value_or(Octets{});
    const Octets packed = pack(septets, 0);
    return {alphanumeric, (septets.size() * 7 + 3) / 4, packed};
}

Octets centre()
{
    const Address address = address_of(service_centre);
    Octets octets{static_cast<std::uint8_t>(address.octets.size() + 1), address.type};
    append(octets, address.octets);
    return octets;
}

// "24/03/01,08:00:05+04"; the eighth bit from the right of the zone, swapped, is its sign.
Octets time_stamp(const std::string &time)
{
    std::string digits;
    for (const char c : time)
        if (c >= '0' && c <= '9')
            digits += c;
    digits.resize(14, '0');
    Octets octets = semi_octets(digits);
    if (time.find('-') != std::string::npos)
        octets.back() |= 0x08U;
    return octets;
}

struct Part {
    std::uint8_t coding; // that of the whole message
    int reference, total, number;
};

Octets header_of(const Part &part)
{
    if (part.total == 1)
        return {};
    return {5,
            0,
            3,
            static_cast<std::uint8_t>(part.reference),
            static_cast<std::uint8_t>(part.total),
            static_cast<std::uint8_t>(part.number)};
}

// The coding, the length as the coding counts it, and the data.
Octets user_data(std::string_view text, std::uint8_t coding, const Octets &header)
{
    Octets data = header;
    if (coding == ucs2_coding) {
        append(data, ucs2_of(text));
        data.insert(data.begin(), static_cast<std::uint8_t>(data.size()));
        return data;
    }
    const Octets septets = septets_of(text).value_or(Octets{});
    const auto skipped = static_cast<unsigned>(header.size() * 8);
    const unsigned fill = (7 - skipped % 7) % 7;
    const std::size_t header_septets = (skipped + fill) / 7;
    Octets packed = pack(septets, fill);
    append(data, packed);
    data.insert(data.begin(), static_cast<std::uint8_t>(header_septets + septets.size()));
    return data;
}

Pdu deliver_pdu(const daemons::Message &message, std::string_view text, const Part &part)
{
    constexpr std::uint8_t deliver = 0x04; // and no more messages wait
    const Octets header = header_of(part);
    const Address sender = address_of(message.sender);
    Octets octets{static_cast<std::uint8_t>(header.empty() ? deliver : deliver | user_data_header),
                  static_cast<std::uint8_t>(sender.semi_octets), sender.type};
    append(octets, sender.octets);
    octets.push_back(0); // protocol
    octets.push_back(part.coding);
    append(octets, time_stamp(message.time));
    append(octets, user_data(text, part.coding, header));
    return {hexadecimal(centre()) + hexadecimal(octets), static_cast<int>(octets.size())};
}

} // namespace

std::vector<Pdu> deliver_pdus(const daemons::Message &message, int reference)
{
    std::vector<Pdu> pdus;
    const std::vector<std::string> texts = simulated::sms_parts(message.text);
    const std::uint8_t coding = septets_of(message.text) ? gsm_coding : ucs2_coding;
    const int total = static_cast<int>(texts.size());
    pdus.reserve(texts.size());
    for (const std::string &text : texts)
        pdus.push_back(deliver_pdu(message, text,
                                   {coding, reference, total, static_cast<int>(pdus.size()) + 1}));
    return pdus;
}

} // namespace at_front
