#include "answer.h"

namespace at_front
{
namespace
{

struct ResultCode {
    Ending ending;
    const char *text, *number;
};
constexpr ResultCode result_codes[] = {
    {Ending::ok, "OK", "0"},
    {Ending::no_carrier, "NO CARRIER", "3"},
    {Ending::error, "ERROR", "4"},
};

// The modem's own number for what the daemons' table numbers from 200 on.
int own_number(CmeError error)
{
    constexpr int moved = 200, unmoved = 220;
    const int number = static_cast<int>(error);
    return number >= moved && number < unmoved ? number - moved : number;
}

const char *text_of_number(int number)
{
    constexpr int moved = 200;
    const daemons::CmeErrorText *row = daemons::find_cme_error(number);
    if (!row || number == 0)
        row = daemons::find_cme_error(number + moved);
    return row ? row->text : "unknown error";
}

std::string result_code(Ending ending, const Session &session)
{
    for (const ResultCode &row : result_codes)
        if (row.ending == ending)
            return session.verbose ? "\r\n" + std::string(row.text) + "\r\n"
                                   : std::string(row.number) + "\r";
    return "";
}

std::string failure(const Answer &answer, const Session &session)
{
    if (session.error_mode == 0 && answer.ending == Ending::cme)
        return result_code(Ending::error, session);
    const bool as_text = session.error_mode == 2 && answer.ending == Ending::cme;
    const char *const kind = answer.ending == Ending::cme ? "+CME ERROR: " : "+CMS ERROR: ";
    return text_of_report(
        kind + (as_text ? text_of_number(answer.number) : std::to_string(answer.number)));
}

} // namespace

Answer ended(CmeError result)
{
    if (result == CmeError::ok)
        return ok;
    return {{}, Ending::cme, own_number(result)};
}

// One line end between two lines: a message's header and its PDU belong together.
std::string text_of(const std::vector<std::string> &lines, const Session &session)
{
    if (lines.empty())
        return "";
    std::string text = session.verbose ? "\r\n" : "";
    for (const std::string &each : lines)
        text += each + "\r\n";
    return text;
}

std::string text_of_ending(const Answer &answer, const Session &session)
{
    if (answer.ending == Ending::prompt)
        return "\r\n> ";
    if (session.quiet)
        return "";
    if (answer.ending == Ending::cme || answer.ending == Ending::cms)
        return failure(answer, session);
    return result_code(answer.ending, session);
}

std::string text_of_report(const std::string &line)
{
    return "\r\n" + line + "\r\n";
}

} // namespace at_front
