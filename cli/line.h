// A command line as typed, turned into a command and its arguments.
#ifndef CLI_LINE_H
#define CLI_LINE_H

#include "arguments.h"
#include "table.h"

namespace cli
{

struct Line {
    const Program *program;
    std::string path{};               // of the command, or as far as it was given
    const Command *command = nullptr; // null before a command's last word, unless "" is one
    Arguments options{};              // the program's, those of readings too
    Arguments arguments{};            // the command's

    bool help() const { return options.has(help_option.name); }
    bool version() const { return options.has(version_option.name); }
    // "cmifctl sim enter-pin"
    std::string full_path() const;
};

// Whether its command, with these arguments, changes nothing.
bool only_reads(const Line &line);

// What may be given by name: the command's options and the program's.
std::vector<const Argument *> options_of(const Line &line);

// Fails with UsageError when the command line is invalid. With --help or --version only what
// precedes the mistake is there.
Line parse(const Program &program, std::span<const char *const> words);

} // namespace cli

#endif
