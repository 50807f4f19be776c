// A command line as words, read one after the other. What is not as it must be is a ScriptError
// that names the column and what is allowed.
#ifndef SCENARIO_WORDS_H
#define SCENARIO_WORDS_H

#include "script_error.h"

#include <chrono>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace scenario
{

struct Word {
    std::string text; // without its quotes
    std::size_t column = 0;
};

class Words
{
public:
    // Splits at spaces and tabs. "..." is one word, in which \" and \\ stand for " and \. A # that
    // begins a word begins a comment. Fails where a quote is not closed.
    explicit Words(std::string_view line);

    // Where the comment begins in the line, or its length.
    std::size_t comment() const { return comment_; }

    bool at_end() const { return next_ == words_.size(); }
    const Word *peek() const { return at_end() ? nullptr : &words_[next_]; }
    bool next_is(std::string_view text);
    bool take_if(std::string_view text); // takes the next word if it is this one

    // The next word. `what` names it in errors, and `rule` is what it may be: "one of: a, b".
    Word take(std::string_view what, std::string_view rule = "");
    int take_number(std::string_view what, int min, int max);
    std::string take_digits(std::string_view what, std::size_t min, std::size_t max);
    std::string take_one_of(std::string_view what, std::initializer_list<std::string_view> allowed);
    std::chrono::milliseconds take_duration(std::string_view what); // 250ms, 5s, 1.5s, 2min

    // All words that are left, with one space between them.
    std::string take_rest(std::string_view what);

    // For completion: what could stand at the end of the line, as far as the parsing came there.
    // What is asked for by its text, or is one of several, is offered without this call.
    struct Offer {
        std::string text, description;
    };
    void offer(std::string_view text, std::string_view description = "");
    const std::vector<Offer> &offers() const { return offers_; }

    // Fails when words are left; `usage` follows the message.
    void expect_end(std::string_view usage = "") const;

    // Fail at the word that was taken last.
    [[noreturn]] void fail(const std::string &message) const;
    [[noreturn]] void refuse(std::string_view what, std::string_view rule) const;

private:
    std::size_t end_column() const;

    std::vector<Word> words_;
    std::size_t next_ = 0;
    std::size_t length_; // of the line
    std::size_t comment_;
    std::vector<Offer> offers_;
};

// In quotation marks for a message, which shows only the beginning of a long word.
std::string quoted(const std::string &text);

// "one of: a, b"
template <class List>
std::string one_of(const List &allowed)
{
    std::string rule;
    for (const auto &one : allowed)
        rule.append(rule.empty() ? "one of: " : ", ").append(one);
    return rule;
}

} // namespace scenario

#endif
