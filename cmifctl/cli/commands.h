// The command table: parsing, help, completion and manual are all made from it.
#ifndef CMIFCTL_CLI_COMMANDS_H
#define CMIFCTL_CLI_COMMANDS_H

#include "cmifctl/context.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cmifctl
{

struct Argument {
    enum class Kind { required, optional, option, flag };

    Kind kind;
    const char *name;  // the key under which the verb finds it
    const char *value; // its placeholder in the help; a flag takes one after = if it has one
    const char *help;
    EnumTable choices{};  // empty: any text
    bool secret = false;  // users may type a secret in its place, which is never repeated
    char letter = '\0';   // of the short form of an option or flag
    bool repeats = false; // an option that may be given several times

    constexpr bool positional() const { return kind == Kind::required || kind == Kind::optional; }
};

using ArgumentRows = std::span<const Argument>;

// Whether a command only reads, so that it can be repeated; `either` reads unless its first
// argument gives the value to set.
enum class Access { reads, acts, either };

struct Command {
    const char *path; // "sim enter-pin"
    const char *summary;
    Access access;
    void (*run)(Context &);
    ArgumentRows arguments{};
    const char *details = ""; // follows the summary in help and manual
};

struct Group {
    const char *name;
    const char *summary;
};

std::span<const Group> groups();
std::span<const Command> commands();
// The options of every command.
ArgumentRows global_options();

// Whether the command with these arguments only reads.
bool only_reads(const Command &command, const Arguments &given);
bool takes_secrets(const Command &command);
const Command *find_command(std::string_view path);
// The words that may follow `path`, in the table's order; the groups for an empty path.
std::vector<std::string> subcommands_of(std::string_view path);

} // namespace cmifctl

#endif
