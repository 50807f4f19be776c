// The text of a short message: what fits into one, and how a longer one is divided.
#ifndef MODEMS_SIMULATED_SMS_TEXT_H
#define MODEMS_SIMULATED_SMS_TEXT_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simulated
{

constexpr std::size_t max_sms_parts = 255;

// Where the first byte is that does not belong to a character of UTF-8.
std::optional<std::size_t> find_no_utf8(std::string_view text);

// The texts of the messages that carry `text`, which is UTF-8 (3GPP TS 23.038, 23.040): one holds
// 160 characters of the GSM alphabet, or 70 UTF-16 units when there is another character in the
// text; of several, each holds 153 or 67.
std::vector<std::string> sms_parts(std::string_view text);

} // namespace simulated

#endif
