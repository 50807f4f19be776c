// A command line, word by word: parsing takes all of them, completion all but the last.
#ifndef CLI_WALKER_H
#define CLI_WALKER_H

#include "line.h"

namespace cli
{

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
    const Argument *find_program_option(const std::string &option) const;
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

} // namespace cli

#endif
