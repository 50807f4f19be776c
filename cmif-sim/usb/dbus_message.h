// Messages of D-Bus as bytes: as much of it as a service with plain answers needs.
#ifndef CMIF_SIM_USB_DBUS_MESSAGE_H
#define CMIF_SIM_USB_DBUS_MESSAGE_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace cmif_sim
{

// Collects values, each at a multiple of its own size as D-Bus has it.
class DbusBody
{
public:
    void add_byte(std::uint8_t value) { bytes_ += static_cast<char>(value); }
    void add_number(std::uint32_t value);
    void add_text(std::string_view text); // also a path
    void add_signature(std::string_view signature);
    void align(std::size_t size) { bytes_.resize((bytes_.size() + size - 1) / size * size); }

    const std::string &bytes() const { return bytes_; }

private:
    std::string bytes_;
};

struct DbusMessage {
    enum Type : std::uint8_t { call = 1, reply = 2, failure = 3, notice = 4 };

    Type type = call;
    std::uint32_t serial = 0;
    bool wants_reply = true;
    std::string path{}, interface {
    }, member{}, error{}, destination{}, sender{};
    std::uint32_t reply_to = 0;
    std::string signature{}; // of the body
    std::string body{};
};

std::string bytes_of(const DbusMessage &message);

// How long the message is whose first 16 bytes these are; 0 for what is none.
constexpr std::size_t dbus_start_size = 16;
std::size_t size_of_message(std::string_view start);

// Throws std::exception for what is cut short.
DbusMessage parse_message(std::string_view bytes);

// The texts of a body that holds nothing else.
std::vector<std::string> texts_of(const DbusMessage &message);

} // namespace cmif_sim

#endif
