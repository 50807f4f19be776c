#include "mishaps.h"

#include <algorithm>
#include <cctype>

namespace at_front
{
namespace
{

using scenario::Words;

std::string upper(std::string text)
{
    for (char &c : text)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

Mishap take_mishap(Words &words)
{
    constexpr int max_error = 999;
    const auto kind = words.take_one_of("what happens to an answer", {"lose", "delay", "refuse"});
    Mishap mishap{Mishap::Kind::lose};
    if (kind == "delay") {
        mishap.kind = Mishap::Kind::delay;
        mishap.delay = words.take_duration("the delay");
    } else if (kind == "refuse") {
        mishap.kind = Mishap::Kind::refuse;
        mishap.error = words.take_number("the number of +CME ERROR", 0, max_error);
    }
    if (!words.at_end())
        mishap.command = upper(words.take("the command").text);
    return mishap;
}

} // namespace

void Mishaps::arm(Mishap mishap)
{
    const std::lock_guard lock(mutex_);
    armed_.push_back(std::move(mishap));
}

std::optional<Mishap> Mishaps::take(const std::string &line)
{
    const std::string commands = upper(line).substr(std::min<std::size_t>(2, line.size()));
    const std::lock_guard lock(mutex_);
    const auto found = std::find_if(armed_.begin(), armed_.end(), [&](const Mishap &each) {
        return commands.starts_with(each.command);
    });
    if (found == armed_.end())
        return std::nullopt;
    Mishap mishap = std::move(*found);
    armed_.erase(found);
    return mishap;
}

scenario::Command answer_command(Mishaps &mishaps)
{
    return {"answer", "lose | delay DURATION | refuse N, then [COMMAND]",
            "have the modem lose, delay or refuse its next answer on an AT port",
            [&mishaps](Words &words) -> scenario::Action {
                return [&mishaps, mishap = take_mishap(words)] { mishaps.arm(mishap); };
            }};
}

} // namespace at_front
