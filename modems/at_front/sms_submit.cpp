// Messages that a terminal sends, as PDUs.
#include "sms_pdu.h"

namespace at_front
{
namespace
{

// Takes octets off the front; what is not there is 0, and remembered.
class Reader
{
public:
    explicit Reader(const Octets &octets) : octets_(octets) {}

    std::uint8_t take()
    {
        complete_ = complete_ && position_ < octets_.size();
        return complete_ ? octets_[position_++] : std::uint8_t{0};
    }
    Octets take(std::size_t count)
    {
        Octets taken;
        for (std::size_t i = 0; i < count && complete_; ++i)
            taken.push_back(take());
        return taken;
    }
    Octets rest() { return take(octets_.size() - position_); }
    bool complete() const { return complete_; }

private:
    const Octets &octets_;
    std::size_t position_ = 0;
    bool complete_ = true;
};

std::string take_address(Reader &reader)
{
    constexpr std::uint8_t type_of_number = 0x70, international = 0x10;
    const std::size_t digits = reader.take();
    const std::uint8_t type = reader.take();
    std::string text = (type & type_of_number) == international ? "+" : "";
    for (const std::uint8_t octet : reader.take((digits + 1) / 2)) {
        text += static_cast<char>('0' + (octet & 0xfU));
        if (octet >> 4 < 10)
            text += static_cast<char>('0' + (octet >> 4));
    }
    return text;
}

// How many octets the validity period takes, by the first octet.
std::size_t validity_size(std::uint8_t first)
{
    constexpr std::size_t sizes[] = {0, 7, 1, 7};
    return sizes[first >> 3 & 3U];
}

// The text behind a header, if there is one.
std::optional<std::string> text_of(const Octets &data, std::size_t length, std::uint8_t coding,
                                   bool with_header)
{
    const std::size_t header = with_header && !data.empty() ? data[0] + 1U : 0;
    if (header > data.size())
        return std::nullopt;
    const Octets body(data.begin() + static_cast<std::ptrdiff_t>(header), data.end());
    if ((coding & 0x0cU) == 0x08)
        return text_of_ucs2(body);
    if ((coding & 0x0cU) != 0)
        return std::nullopt;
    const auto fill = static_cast<unsigned>((7 - header * 8 % 7) % 7);
    const std::size_t header_septets = (header * 8 + fill) / 7;
    if (header_septets > length || (length * 7 + 7) / 8 > data.size())
        return std::nullopt;
    return text_of_septets(unpack(body, length - header_septets, fill));
}

} // namespace

std::optional<Submitted> parse_submit(std::string_view digits, int length)
{
    constexpr std::uint8_t kind = 0x03, submit = 0x01, user_data_header = 0x40;
    const auto octets = octets_of(digits.substr(0, digits.find('\n')));
    if (!octets || octets->empty())
        return std::nullopt;
    Reader reader(*octets);
    const std::size_t centre = reader.take();
    reader.take(centre);
    if (octets->size() != 1 + centre + static_cast<std::size_t>(length))
        return std::nullopt;
    const std::uint8_t first = reader.take();
    reader.take(); // reference
    const std::string recipient = take_address(reader);
    reader.take(); // protocol
    const std::uint8_t coding = reader.take();
    reader.take(validity_size(first));
    const std::size_t size = reader.take();
    if (!reader.complete() || (first & kind) != submit)
        return std::nullopt;
    const auto text = text_of(reader.rest(), size, coding, (first & user_data_header) != 0);
    if (!text)
        return std::nullopt;
    return Submitted{recipient, *text};
}

} // namespace at_front
