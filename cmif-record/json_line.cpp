#include "json_line.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace cmif_record
{
namespace
{

constexpr char hex_digits[] = "0123456789abcdef";

void append_number(std::string &out, long long number)
{
    char digits[24];
    auto *const end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    out.append(std::begin(digits), end);
}

bool needs_escape(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return byte < ' ' || byte == 0x7F || c == '"' || c == '\\';
}

void append_escaped(std::string &out, char c)
{
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\')
        out.append(1, '\\').append(1, c);
    else
        out.append("\\u00").append(1, hex_digits[byte >> 4]).append(1, hex_digits[byte & 15]);
}

// What the first byte of a character says: how many follow, and the smallest code of this length.
struct Lead {
    int following;
    char32_t bits, min;
};

Lead lead_of(unsigned char byte)
{
    if (byte < 0x80)
        return {0, byte, 0};
    if ((byte & 0xE0) == 0xC0)
        return {1, byte & 0x1FU, 0x80};
    if ((byte & 0xF0) == 0xE0)
        return {2, byte & 0x0FU, 0x800};
    if ((byte & 0xF8) == 0xF0)
        return {3, byte & 0x07U, 0x10000};
    return {-1, 0, 0};
}

} // namespace

bool is_utf8(std::string_view text)
{
    for (std::size_t i = 0; i < text.size();) {
        const Lead lead = lead_of(static_cast<unsigned char>(text[i++]));
        char32_t code = lead.bits;
        for (int left = lead.following; left > 0; --left, ++i) {
            if (i == text.size() || (static_cast<unsigned char>(text[i]) & 0xC0) != 0x80)
                return false;
            code = code << 6 | (static_cast<unsigned char>(text[i]) & 0x3FU);
        }
        const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
        if (lead.following < 0 || code < lead.min || code > 0x10FFFF || surrogate)
            return false;
    }
    return true;
}

JsonLine::JsonLine()
{
    constexpr std::size_t usual_size = 512;
    text_.reserve(usual_size);
    text_ = "{";
}

void JsonLine::start(const char *name)
{
    if (text_.back() != '{')
        text_ += ',';
    text_.append(1, '"').append(name).append("\":");
}

void JsonLine::add(const char *name, std::string_view text)
{
    if (!is_utf8(text)) {
        open(name);
        add_hex("hex", text);
        return close();
    }
    start(name);
    append_text(text);
}

void JsonLine::append_text(std::string_view text)
{
    text_ += '"';
    while (!text.empty()) {
        const auto *plain_end = std::find_if(text.begin(), text.end(), needs_escape);
        const auto plain = static_cast<std::size_t>(plain_end - text.begin());
        text_.append(text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty())
            break;
        append_escaped(text_, text.front());
        text.remove_prefix(1);
    }
    text_ += '"';
}

void JsonLine::add(const char *name, long long number)
{
    start(name);
    append_number(text_, number);
}

void JsonLine::add_null(const char *name)
{
    add_literal(name, "null");
}

void JsonLine::add_literal(const char *name, std::string_view json)
{
    start(name);
    text_ += json;
}

void JsonLine::add_list(const char *name, const std::vector<std::string> &texts)
{
    start(name);
    text_ += '[';
    for (const std::string &text : texts) {
        if (text_.back() != '[')
            text_ += ',';
        append_text(text);
    }
    text_ += ']';
}

void JsonLine::add_hex(const char *name, std::string_view bytes)
{
    start(name);
    text_ += '"';
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text_.append(1, hex_digits[byte >> 4]).append(1, hex_digits[byte & 15]);
    }
    text_ += '"';
}

void JsonLine::add_seconds(const char *name, long long nanoseconds)
{
    constexpr long long second = 1'000'000; // in microseconds
    const long long time = nanoseconds / 1000;
    start(name);
    append_number(text_, time / second);
    const std::string fraction = std::to_string(second + time % second);
    text_.append(1, '.').append(fraction, 1);
}

void JsonLine::open(const char *name)
{
    start(name);
    text_ += '{';
}

void JsonLine::close()
{
    text_ += '}';
}

const std::string &JsonLine::finish()
{
    return text_ += "}\n";
}

} // namespace cmif_record
