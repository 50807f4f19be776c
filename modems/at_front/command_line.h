// A command line as V.250 has it: "AT", then one or more commands.
#ifndef MODEMS_AT_FRONT_COMMAND_LINE_H
#define MODEMS_AT_FRONT_COMMAND_LINE_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace at_front
{

enum class Form { test, read, set, execute };

// "+CMEE=1" is {"+CMEE", set, "1"}; of a basic command, "E0" is {"E", execute, "0"}.
struct Request {
    std::string name; // in upper case
    Form form = Form::execute;
    std::string arguments{};
};

// What follows "AT". Spaces count in quoted text only. Nothing if the line is malformed.
std::optional<std::vector<Request>> parse_line(std::string_view line);

} // namespace at_front

#endif
