// The one table of commands: parsing, help, completion and manual are all made from it.
#ifndef CMIFCTL_CLI_COMMANDS_H
#define CMIFCTL_CLI_COMMANDS_H

#include "cmifctl/context.h"

#include <span>
#include <string_view>
#include <vector>

namespace cmifctl
{

struct Argument {
    enum class Kind { required, optional, option, flag };

    Kind kind;
    const char *name;  // as the verbs ask for it
    const char *value; // what stands for it in the help; a flag has none
    const char *help;
    Names choices{};     // empty: any text
    bool secret = false; // so that people write a secret in its place, which is never repeated
};

struct Command {
    const char *path; // "sim enter-pin"
    const char *summary;
    void (*run)(Invocation &);
    std::vector<Argument> arguments{};
    const char *more = ""; // what the manual says beyond the summary
};

struct Group {
    const char *name;
    const char *summary;
};

std::span<const Group> groups();
std::span<const Command> commands();
// Those that every command takes.
std::span<const Argument> global_options();

bool takes_secrets(const Command &command);
const Command *find_command(std::string_view path);
// The words that may follow `path` ("" gives the groups), in the table's order.
std::vector<std::string> words_after(std::string_view path);

} // namespace cmifctl

#endif
