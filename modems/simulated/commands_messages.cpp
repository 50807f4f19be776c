// Short messages that arrive.
#include "commands.h"
#include "daemons/digits.h"
#include "sms_text.h"

#include <algorithm>
#include <cstdio>

namespace simulated
{
namespace
{

using scenario::Action;
using scenario::ScriptError;
using scenario::Words;

// A number, or a name of at most 11 characters, as networks send them.
std::string take_sender(Words &words)
{
    constexpr std::string_view rule =
        "a number of at most 20 digits, or a name of at most 11 characters of ASCII";
    std::string sender = words.take("the sender", rule).text;
    const std::string_view digits =
        std::string_view(sender).substr(sender.starts_with('+') ? 1 : 0);
    const bool name =
        !sender.empty() && sender.size() <= 11 &&
        std::all_of(sender.begin(), sender.end(), [](char c) { return c >= ' ' && c <= '~'; });
    if (!daemons::is_digits(digits, 1, 20) && !name)
        words.refuse("the sender", rule);
    return sender;
}

// The words that are left, with one space between them.
std::string take_text(Words &words)
{
    std::string text;
    do {
        const scenario::Word word = words.take("the text");
        if (const auto position = find_no_utf8(word.text)) {
            char byte[8];
            std::snprintf(byte, sizeof byte, "0x%02x",
                          static_cast<unsigned char>(word.text[*position]));
            throw ScriptError(word.column + *position,
                              std::string("the text is UTF-8, which has no byte ") + byte +
                                  " here");
        }
        text.append(text.empty() ? "" : " ").append(word.text);
    } while (!words.at_end());
    if (sms_parts(text).size() > max_sms_parts)
        words.fail("the text fits into " + std::to_string(max_sms_parts) + " messages");
    return text;
}

Action parse_inject(Modem &modem, Words &words)
{
    const std::string sender = take_sender(words);
    const std::string text = take_text(words);
    return [&modem, sender, text] {
        modem.apply([&](ModemState &state, Time now) { state.receive_message(sender, text, now); });
    };
}

Action parse_storm(Modem &modem, Words &words)
{
    const int count = words.take_number("the number of messages", 1, 10'000);
    return [&modem, count] {
        modem.apply([&](ModemState &state, Time now) {
            for (int i = 1; i <= count; ++i)
                state.receive_message(
                    "+12025550111", "Message " + std::to_string(i) + " of " + std::to_string(count),
                    now);
        });
    };
}

Action parse_sms(Modem &modem, Words &words)
{
    if (words.take_one_of("what arrives", {"inject", "storm"}) == "inject")
        return parse_inject(modem, words);
    return parse_storm(modem, words);
}

} // namespace

scenario::Commands message_commands(Modem &modem)
{
    return {{"sms", "inject FROM TEXT... | storm N", "have a message arrive, or N of them",
             [&modem](Words &words) { return parse_sms(modem, words); }}};
}

} // namespace simulated
