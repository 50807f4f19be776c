// One reading of a provider list: the file, an array full of noise, and its result.
//
//     expect_list("(1,\"One\")(2)", {{"1,\"One\"", {1, "One"}}, {"2", {2}}});
#ifndef TESTS_SUPPORT_PROVIDER_LIST_RUN_H
#define TESTS_SUPPORT_PROVIDER_LIST_RUN_H

#include "cmif/cmif.h"
#include "record.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

struct ProviderListRun {
    static constexpr size_t max_groups = 511; // that a file can hold

    ProviderListRun();

    Recorded run;
    std::array<cmif_provider_info, max_groups + 1> list; // one more, to see that it is not written
};

// Of a file that holds `file`, and of the file that exists.
ProviderListRun read_provider_list(const std::string &file);
ProviderListRun read_existing_provider_list();

// A record's fields; the others keep the caller's values.
struct Provider {
    std::optional<int> stat{};
    std::optional<std::string> oper_long{};
    std::optional<std::string> oper_short{};
    std::optional<std::string> oper_numeric{};
    std::optional<int> act{};
};

// Compares every byte: those after a name's NUL are the caller's, too.
void expect_record(const cmif_provider_info &found, const Provider &provider);

// A group as it is printed, and the record that it becomes.
struct Group {
    std::string line;
    Provider provider;
};

// How the search for groups ends. Nothing is printed where there was no group to search.
inline const std::string list_end = "ptr1 is null.";
inline const std::string unclosed = "ptr2 is null.";
inline const std::string no_search;

// The reading printed `text` and then `groups`, which fill the array from its start.
void expect_reading(const ProviderListRun &reading, const std::string &text,
                    const std::vector<Group> &groups, const std::string &end);

// `file` yields `groups`, and all of it is printed.
void expect_list(const std::string &file, const std::vector<Group> &groups,
                 const std::string &end = list_end);

#endif
