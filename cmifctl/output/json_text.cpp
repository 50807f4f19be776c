#include "json_text.h"

#include "client/json.h"
#include "terminal_text.h"
#include "utf8.h"

#include <array>
#include <cstdio>

namespace cmifctl
{
namespace
{

constexpr char32_t replacement = 0xfffd; // written for bytes that are not UTF-8

std::string escape(char32_t code)
{
    std::array<char, 16> buffer{};
    if (code < 0x10000) {
        std::snprintf(buffer.data(), buffer.size(), "\\u%04x", static_cast<unsigned>(code));
        return buffer.data();
    }
    const auto beyond = static_cast<unsigned>(code - 0x10000);
    std::snprintf(buffer.data(), buffer.size(), "\\u%04x\\u%04x", 0xd800 + (beyond >> 10U),
                  0xdc00 + (beyond & 0x3ffU));
    return buffer.data();
}

} // namespace

// The dump has escaped the controls below a space; those that it has itself are line ends between
// members.
std::string render_json(const client::Json &document, Layout layout)
{
    const std::string dumped = document.dump(layout == Layout::indented ? 2 : -1, ' ', false,
                                             client::Json::error_handler_t::replace);
    std::string out;
    for (std::string_view rest = dumped; !rest.empty();) {
        const Character next = first_character(rest);
        const bool escaped = (harmful(next.code) && next.code != U'\n') || next.code == replacement;
        out += escaped ? escape(next.code) : std::string(rest.substr(0, next.length));
        rest.remove_prefix(next.length);
    }
    return out + "\n";
}

} // namespace cmifctl
