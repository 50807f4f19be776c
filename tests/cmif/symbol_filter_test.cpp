// symbol_filter: the text between quotes, and no byte more.
#include "cmif/cmif.h"
#include "tests/support/record.h"

#include <gtest/gtest.h>

// What is copied, with the bytes after it untouched.
TEST(SymbolFilter, CopiesWhatIsBetweenTheFirstQuotes)
{
    struct {
        std::string source;
        int result;
        std::string copied;
    } const rows[] = {
        {"abc", 0, "abc"},
        {"\"abc\"", 0, "abc"},
        {"x\"abc\"y", 0, "abc"},
        {"\"abc", -1, ""},
        {"abc\"", -1, ""},
        {"\"", -1, ""},
        {"\"\"", 0, ""},
        {"", 0, ""},
        {"a\"b\"c\"d\"e", 0, "b"},
        {"\"\"\"abc\"", 0, ""},
        {"'abc'", 0, "'abc'"},
        {" , (%n) ", 0, " , (%n) "},
        {"\"\xC3\xA4\xFF\"", 0, "\xC3\xA4\xFF"},
        {std::string(5000, 'x'), 0, std::string(5000, 'x')},
        {"\"" + std::string(5000, 'x') + "\"", 0, std::string(5000, 'x')},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.source.substr(0, 20));
        std::string out(6000, '?');
        const Recorded run = record([&] { return symbol_filter(row.source.c_str(), out.data()); });
        EXPECT_EQ(run.result, row.result);
        EXPECT_EQ(out, row.copied + std::string(6000 - row.copied.size(), '?'));
        EXPECT_EQ(run.steps, Lines{});
    }
}
