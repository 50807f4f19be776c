// Bytes that a line of the saved file can't contain as they are, and how it spells them.
#ifndef PLATFORM_ESCAPE_H
#define PLATFORM_ESCAPE_H

#include <optional>
#include <string>
#include <string_view>

namespace host_store
{

enum class Side { key, value }; // of the equals sign

// The spelling of `text`: control characters, backslashes, a space at either end, and in a key an
// equals sign or a leading # are escaped.
std::string escaped(std::string_view text, Side side);

// The text that is spelled so; nothing if an escape is unknown or yields a NUL.
std::optional<std::string> unescaped(std::string_view text);

} // namespace host_store

#endif
