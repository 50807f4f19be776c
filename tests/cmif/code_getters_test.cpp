// The converting getters: what each stored value becomes, and which outcome prints.
#include "cmif/cmif.h"
#include "tests/support/memory_store.h"
#include "tests/support/record.h"

#include <gtest/gtest.h>
#include <optional>

namespace
{
constexpr int untouched = 4711;

// A stored value, its code (none: the caller's integer stays), and the place that prints it
// (none: this outcome has no line). Places are numbered within their getter.
struct Outcome {
    std::string stored;
    std::optional<int> code;
    std::optional<int> place;
};

struct CodeGetter {
    const char *name;
    int (*get)(int *);
    std::string key;
    std::string form; // of the line; D is the code
    std::vector<Outcome> outcomes;
};

#define GETTER(function) #function, function

const std::optional<int> none;
const std::string plain = "Get get_val=D";

const CodeGetter getters[] = {
    {GETTER(shared_CMIF_get_mobileNetworkMode),
     "lte_network_search_mode",
     plain,
     {{"0", 0, 0},
      {"1", 1, 1},
      {"2", 2, 2},
      {"3", 3, 3},
      {"4", 4, none},
      {"", 4, none},
      {"00", 4, none},
      {" 1", 4, none},
      {"1 ", 4, none},
      {"12345678", 4, none},
      {"0123456789abcdef", 4, none}}},
    {GETTER(shared_CMIF_GetBandRegion),
     "lte_network_search_mode",
     plain,
     {{"0", 1, 0},
      {"2", 2, 1},
      {"3", 3, 2},
      {"1", 4, none},
      {"4", 4, none},
      {"", 4, none},
      {"2x", 4, none},
      {std::string(4096, '2'), 4, none}}},
    {GETTER(shared_CMIF_GetNetworkMode),
     "lte_operator_select_network_mode",
     "Get ret_val='D'",
     {{"0", 1, 0},
      {"1", 2, 0},
      {"2", 2, 0},
      {"", 2, 0},
      {"00", 2, 0},
      {std::string(4096, '0'), 2, 0}}},
    {GETTER(shared_CMIF_get_mobileInternationalRoam),
     "lte_roam_servive_config",
     plain,
     {{"255", 0, 0},
      {"2", 1, 1},
      {"1", 2, 2},
      {"0", none, none},
      {"", none, none},
      {"25", none, none},
      {"2550", none, none},
      {"25500000000", none, none}}},
    {GETTER(shared_CMIF_get_mobileNetworkStatus),
     "lte_network_reg_status_state",
     plain,
     {{"1", 0, 0},
      {"5", 0, 0},
      {"2", 1, 1},
      {"0", 2, 2},
      {"3", 2, 2},
      {"4", 2, 2},
      {"6", 2, none},
      {"", 2, none},
      {"11", 2, none},
      {"1,5", 2, none}}},
    {GETTER(shared_CMIF_get_OperatorSelectAct),
     "lte_operator_select_ats_value",
     "",
     {{"0", 0, none},
      {"2", 1, none},
      {"3", 2, none},
      {"4", 3, none},
      {"5", 4, none},
      {"6", 5, none},
      {"7", 6, none},
      {"100", 7, none},
      {"1", none, none},
      {"8", none, none},
      {"", none, none},
      {"10", none, none},
      {"1000", none, none},
      {std::string(4096, '7'), none, none}}},
};

std::string line_of(const CodeGetter &getter, int code)
{
    std::string line = getter.form;
    return line.replace(line.find('D'), 1, std::to_string(code));
}

// One call with `outcome`'s value stored.
void expect_call(const CodeGetter &getter, const Outcome &outcome, bool reads_switch, bool prints)
{
    SCOPED_TRACE(std::string(getter.name) + " of '" + outcome.stored.substr(0, 20) + "'");
    store::set(getter.key, outcome.stored);
    int code = untouched;
    const Recorded run = record([&] { return getter.get(&code); });
    Lines steps{"get " + getter.key};
    if (reads_switch)
        steps.push_back("get debug_at_cmif");
    Lines lines;
    if (prints)
        lines.push_back(line_of(getter, code));
    EXPECT_EQ(run.result, 0);
    EXPECT_EQ(code, outcome.code.value_or(untouched));
    EXPECT_EQ(run.output, text(lines));
    for (const std::string &line : lines)
        steps.push_back("print " + line);
    EXPECT_EQ(run.steps, steps);
}

// Every outcome of every getter, each place read on its own first use.
void expect_all(bool switch_on)
{
    for (const CodeGetter &getter : getters) {
        std::vector<bool> seen(8);
        for (const Outcome &outcome : getter.outcomes) {
            const bool has_line = outcome.place.has_value();
            const auto place = static_cast<size_t>(outcome.place.value_or(7));
            expect_call(getter, outcome, has_line && !seen[place], has_line && switch_on);
            seen[place] = true;
        }
    }
}
} // namespace

TEST(CodeGetters, ConvertEveryValueAndPrintItsCode)
{
    store::set("debug_at_cmif", "1");
    expect_all(true);
}

TEST(CodeGetters, ConvertWithoutALineWhenTheSwitchIsOff)
{
    expect_all(false);
}

TEST(CodeGetters, DecideForEachPlaceOnItsOwnFirstUse)
{
    for (const CodeGetter &getter : getters) {
        std::vector<Outcome> places; // one outcome of each place
        for (const Outcome &outcome : getter.outcomes)
            if (outcome.place && static_cast<size_t>(*outcome.place) == places.size())
                places.push_back(outcome);
        for (size_t i = 0; i < places.size(); ++i) {
            store::set("debug_at_cmif", i % 2 == 0 ? "1" : "0");
            expect_call(getter, places[i], true, i % 2 == 0);
        }
        for (size_t i = 0; i < places.size(); ++i)
            expect_call(getter, places[i], false, i % 2 == 0);
    }
}

TEST(CodeGetters, ReadASwitchOfMinusOneAgainAtEachPlace)
{
    store::set("debug_at_cmif", "-1");
    for (int round = 0; round < 2; ++round)
        for (const CodeGetter &getter : getters)
            for (const Outcome &outcome : getter.outcomes)
                expect_call(getter, outcome, outcome.place.has_value(), false);
}

TEST(CodeGetters, RefuseNullBeforeTheyTouchTheStore)
{
    store::set("debug_at_cmif", "1");
    for (const CodeGetter &getter : getters)
        EXPECT_EQ(record([&] { return getter.get(nullptr); }).result, 5) << getter.name;
    EXPECT_EQ(store::accesses(), 0);
}
