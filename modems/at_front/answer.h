// What a command answers: lines of information, and how it ended.
#ifndef MODEMS_AT_FRONT_ANSWER_H
#define MODEMS_AT_FRONT_ANSWER_H

#include "daemons/cme_error.h"
#include "session.h"

#include <string>
#include <vector>

namespace at_front
{

using daemons::CmeError;

// `prompt` asks for the text of a message, which ends with Ctrl-Z.
enum class Ending { ok, error, cme, cms, no_carrier, prompt };

struct Answer {
    std::vector<std::string> lines{};
    Ending ending = Ending::ok;
    int number = 0; // of +CME ERROR or +CMS ERROR
};

inline const Answer ok{};
inline const Answer error{{}, Ending::error};

inline Answer line(std::string text)
{
    return {{std::move(text)}};
}

// CmeError::ok is OK.
Answer ended(CmeError result);
inline const Answer incorrect{{}, Ending::cme, static_cast<int>(CmeError::incorrect_parameters)};

// As 3GPP TS 27.005 numbers what went wrong with messages. Numbers up to 500 are its own.
inline Answer message_error(int number)
{
    return {{}, Ending::cms, number};
}

// The bytes that a terminal receives.
std::string text_of(const std::vector<std::string> &lines, const Session &session);
std::string text_of_ending(const Answer &answer, const Session &session);
std::string text_of_report(const std::string &line);

} // namespace at_front

#endif
