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
    Arguments options{};              // the program's
    Arguments arguments{};            // the command's

    bool help() const { return options.has(help_option.name); }
    bool version() const { return options.has(version_option.name); }
    // "cmifctl sim enter-pin"
    std::string full_path() const;
};

// Takes the words one after the other: groups and verbs, until they name a command; options;
// arguments.
class Walker
{
public:
    explicit Walker(const Program &program) : line_{&program, "", find_command(program, "")} {}

    // Fails with UsageError.
    void take(const std::string &word);
    // To be called after the last word.
    void finish() const;

    const Line &line() const { return line_; }
    // What the next word may be: the value of an option, an option, an argument. Null or false
    // otherwise.
    const Argument *awaiting() const { return awaiting_; }
    bool takes_options() const { return !options_ended_; }
    const Argument *next_positional() const;
    // A program's option or the command's, from "--name" or "-n".
    const Argument *find_option(const std::string &option) const;

private:
    void end_options();
    bool names_command(const std::string &word) const;
    void take_command_word(const std::string &word);
    void take_positional(const std::string &word);
    void take_option(const std::string &word);
    void take_flag(const Argument &flag, const std::optional<std::string> &assigned);
    void take_value(const std::string &word);
    Arguments &arguments_with(const Argument &option);

    Line line_;
    bool options_ended_ = false;
    const Argument *awaiting_ = nullptr;
    const Argument *rest_ = nullptr; // takes all words from now on
};

// Fails with UsageError when the command line is invalid. With --help or --version only what
// precedes the mistake is there.
Line parse(const Program &program, std::span<const char *const> words);

} // namespace cli

#endif
