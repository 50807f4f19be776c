#include "secret_keys.h"

#include "daemons/digits.h"

#include <algorithm>
#include <string>

namespace cmif_record
{
namespace
{

constexpr std::string_view keys[] = {
    "lte_mobile_imei",           "lte_mobile_iccid", "lte_mobile_imsi",
    "lte_subscriber_num_number", "lte_qmi_user",     "lte_qmi_password",
};

// One key for each message.
constexpr std::string_view message_keys[] = {"lte_mobile_sms_da_", "lte_mobile_sms_text_"};

constexpr std::string_view words[] = {"imei",   "iccid",    "imsi",       "msisdn", "phone",
                                      "passwd", "password", "passphrase", "secret"};

// "..._pin1c" holds a number of attempts and "..._pin_mode" a switch: a code is longer.
constexpr std::string_view code_words[] = {"pin", "puk"};

template <std::size_t size>
bool has_word(std::string_view key, const std::string_view (&list)[size])
{
    return std::any_of(std::begin(list), std::end(list), [key](std::string_view word) {
        return key.find(word) != std::string_view::npos;
    });
}

std::string in_small_letters(std::string_view text)
{
    std::string out(text);
    for (char &c : out)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return out;
}

} // namespace

bool is_secret(std::string_view key, std::string_view value)
{
    const bool is_key = std::find(std::begin(keys), std::end(keys), key) != std::end(keys);
    const bool is_message_key =
        std::any_of(std::begin(message_keys), std::end(message_keys),
                    [key](std::string_view start) { return key.starts_with(start); });
    const std::string name = in_small_letters(key);
    return is_key || is_message_key || has_word(name, words) ||
           (has_word(name, code_words) && daemons::is_digits(value, 4, 16));
}

} // namespace cmif_record
