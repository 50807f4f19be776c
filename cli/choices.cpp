#include "choices.h"

namespace cli
{

std::optional<int> code_of(Choices choices, std::string_view text)
{
    for (const Choice &choice : choices)
        if (text == choice.name || (text == choice.word && !text.empty()) ||
            text == std::to_string(choice.code))
            return choice.code;
    return std::nullopt;
}

std::string list_of(Choices choices)
{
    std::string list;
    for (const Choice &choice : choices)
        list.append(list.empty() ? "" : ", ").append(choice.name);
    return list;
}

} // namespace cli
