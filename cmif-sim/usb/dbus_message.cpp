#include "dbus_message.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <stdexcept>

namespace cmif_sim
{
namespace
{

constexpr char byte_order = std::endian::native == std::endian::little ? 'l' : 'B';
constexpr std::uint8_t version = 1, no_reply = 1;
constexpr std::size_t max_size = 1 << 20;

enum Field : std::uint8_t {
    path = 1,
    interface = 2,
    member = 3,
    error = 4,
    reply_to = 5,
    destination = 6,
    sender = 7,
    signature = 8
};

void add_field(DbusBody &fields, Field field, const char *type, const std::string &text)
{
    if (text.empty())
        return;
    fields.align(8);
    fields.add_byte(field);
    fields.add_signature(type);
    *type == 'g' ? fields.add_signature(text) : fields.add_text(text);
}

// Reads values one after the other; throws beyond the end.
class Reader
{
public:
    explicit Reader(std::string_view bytes) : bytes_(bytes) {}

    std::size_t position() const { return position_; }
    void align(std::size_t size) { position_ = (position_ + size - 1) / size * size; }
    std::uint8_t byte() { return static_cast<std::uint8_t>(take(1)[0]); }
    std::uint32_t number()
    {
        align(4);
        std::uint32_t value = 0;
        std::memcpy(&value, take(sizeof value).data(), sizeof value);
        return value;
    }
    std::string text()
    {
        const std::uint32_t size = number();
        return std::string(take(size + std::size_t{1}).substr(0, size));
    }
    std::string short_text()
    {
        const std::size_t size = byte();
        return std::string(take(size + 1).substr(0, size));
    }

private:
    std::string_view take(std::size_t size)
    {
        if (position_ > bytes_.size() || bytes_.size() - position_ < size)
            throw std::runtime_error("a D-Bus message is cut short");
        position_ += size;
        return bytes_.substr(position_ - size, size);
    }

    std::string_view bytes_;
    std::size_t position_ = 0;
};

void read_field(Reader &reader, DbusMessage &message)
{
    reader.align(8);
    const std::uint8_t field = reader.byte();
    const std::string type = reader.short_text();
    if (type == "u") {
        const std::uint32_t value = reader.number();
        if (field == reply_to)
            message.reply_to = value;
        return;
    }
    const std::string text = type == "g" ? reader.short_text() : reader.text();
    std::string *const fields[] = {
        nullptr, &message.path,        &message.interface, &message.member,   &message.error,
        nullptr, &message.destination, &message.sender,    &message.signature};
    if (field < std::size(fields) && fields[field])
        *fields[field] = text;
}

} // namespace

void DbusBody::add_number(std::uint32_t value)
{
    align(sizeof value);
    char bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    bytes_.append(bytes, sizeof bytes);
}

void DbusBody::add_text(std::string_view text)
{
    add_number(static_cast<std::uint32_t>(text.size()));
    bytes_.append(text).append(1, '\0');
}

void DbusBody::add_signature(std::string_view signature)
{
    add_byte(static_cast<std::uint8_t>(signature.size()));
    bytes_.append(signature).append(1, '\0');
}

std::string bytes_of(const DbusMessage &message)
{
    DbusBody fields;
    add_field(fields, path, "o", message.path);
    add_field(fields, interface, "s", message.interface);
    add_field(fields, member, "s", message.member);
    add_field(fields, error, "s", message.error);
    add_field(fields, destination, "s", message.destination);
    add_field(fields, signature, "g", message.signature);
    if (message.reply_to != 0) {
        fields.align(8);
        fields.add_byte(reply_to);
        fields.add_signature("u");
        fields.add_number(message.reply_to);
    }
    DbusBody all;
    for (const std::uint8_t each :
         {static_cast<std::uint8_t>(byte_order), static_cast<std::uint8_t>(message.type),
          std::uint8_t{0}, version})
        all.add_byte(each);
    all.add_number(static_cast<std::uint32_t>(message.body.size()));
    all.add_number(message.serial);
    all.add_number(static_cast<std::uint32_t>(fields.bytes().size()));
    std::string bytes = all.bytes() + fields.bytes();
    bytes.resize((bytes.size() + 7) / 8 * 8);
    return bytes + message.body;
}

std::size_t size_of_message(std::string_view start)
{
    if (start.size() < dbus_start_size || start[0] != byte_order)
        return 0;
    Reader reader(start);
    for (int i = 0; i < 4; ++i)
        reader.byte();
    const std::size_t body = reader.number();
    reader.number();
    const std::size_t header = (dbus_start_size + std::size_t{reader.number()} + 7) / 8 * 8;
    return header + body <= max_size ? header + body : 0;
}

DbusMessage parse_message(std::string_view bytes)
{
    DbusMessage message;
    Reader reader(bytes);
    reader.byte();
    message.type = static_cast<DbusMessage::Type>(reader.byte());
    message.wants_reply = (reader.byte() & no_reply) == 0;
    reader.byte();
    reader.number();
    message.serial = reader.number();
    const std::size_t end = dbus_start_size + std::size_t{reader.number()};
    while (reader.position() < end)
        read_field(reader, message);
    message.body = bytes.substr(std::min((end + 7) / 8 * 8, bytes.size()));
    return message;
}

std::vector<std::string> texts_of(const DbusMessage &message)
{
    std::vector<std::string> texts;
    Reader reader(message.body);
    while (reader.position() < message.body.size())
        texts.push_back(reader.text());
    return texts;
}

} // namespace cmif_sim
