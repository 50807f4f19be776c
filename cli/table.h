// A program's command line as tables: parsing, help, manual and completion are all made from them.
#ifndef CLI_TABLE_H
#define CLI_TABLE_H

#include "choices.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cli
{

// What may complete a word.
struct Candidate {
    std::string value;
    std::string description;
};

// What few arguments have: rows name it, {.secret = true}.
struct ArgumentTraits {
    bool secret = false;  // users may type a secret in its place, which is never repeated
    char letter = '\0';   // of the short form of an option or flag
    bool repeats = false; // an option; a positional argument takes all words from there on
    std::vector<Candidate> (*known_values)() = nullptr; // for completion
    // For completion of a positional argument that takes all words: what may follow these of them.
    std::vector<Candidate> (*known_after)(const std::vector<std::string> &words) = nullptr;
};

struct Argument {
    // `rest` is every word after "--".
    enum class Kind { required, optional, rest, option, flag };

    Kind kind;
    const char *name;  // the key under which the program finds it
    const char *value; // its placeholder in the help; a flag takes one after = if it has one
    const char *help;
    Choices choices{}; // empty: any text
    ArgumentTraits traits{};

    constexpr bool positional() const { return kind == Kind::required || kind == Kind::optional; }
    constexpr bool by_name() const { return kind == Kind::option || kind == Kind::flag; }
};
using ArgumentRows = std::span<const Argument>;

constexpr Argument help_option{Argument::Kind::flag, "help", "", "show help", {}, {.letter = 'h'}};
constexpr Argument version_option{Argument::Kind::flag, "version", "",
                                  "show the version",   {},        {.letter = 'V'}};

// Whether a command only reads; `either` reads unless its first argument gives the value to set.
enum class Access { reads, acts, either };

struct Command {
    const char *path; // "sim enter-pin"; "" for what a program does without a command
    const char *summary;
    Access access;
    const char *example; // its arguments in an example
    ArgumentRows arguments{};
    const char *details = ""; // follows the summary in help and manual
};

// The first word of several commands.
struct Group {
    const char *name;
    const char *summary;
};

// An entry of a list in help and manual.
struct Term {
    const char *name;
    const char *meaning;
};

struct Program {
    const char *name;
    const char *version;
    const char *summary;
    const char *description;
    std::span<const Group> groups;
    std::span<const Command> commands;
    ArgumentRows options;           // of every command
    ArgumentRows reading_options{}; // of commands that only read
    std::span<const Term> examples;
    std::span<const Term> exit_status;
    std::span<const Term> environment;
    std::span<const Term> files;
    const char *see_also;
};

bool takes_secrets(const Command &command);
const Command *find_command(const Program &program, std::string_view path);
// The words that may follow `path`, in the table's order, with their summaries.
std::vector<Candidate> subcommands_of(const Program &program, std::string_view path);

} // namespace cli

#endif
