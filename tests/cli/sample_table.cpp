#include "sample_table.h"

namespace
{

using cli::Argument;
using enum Argument::Kind;
using enum cli::Access;

std::vector<cli::Candidate> known_plants()
{
    return {{"rose", "red; \x1b\nthorns"}, {"rosemary", ""}, {"sea kale", "two words"}};
}

// As often as there are words before.
std::vector<cli::Candidate> known_verses(const std::vector<std::string> &words)
{
    std::string la;
    for (const std::string &word : words)
        la += word + "-";
    return {{la + "la", "sung"}};
}

// clang-format off

constexpr cli::Choice colours[] = {{1, "red"}, {2, "blue"}};
constexpr cli::Choice input[]   = {{0, "-"}};

constexpr Argument plant_arguments[] = {
    {required, "plant",  "PLANT",  "which plant", {}, {.known_values = known_plants}},
    {optional, "colour", "COLOUR", "its colour",  colours},
    {option,   "depth",  "CM",     "how deep"},
    {option,   "beside", "PLANT",  "which neighbours", {}, {.repeats = true, .known_values = known_plants}},
    {flag,     "dry",    "",       "without water"},
};
constexpr Argument unlock_arguments[] = {
    {optional, "source", "-",      "read the code from standard input", input, {.secret = true}},
};
constexpr Argument run_arguments[] = {
    {flag,     "quiet",  "",       "without output"},
    {rest,     "words",  "TOOL [ARGUMENT...]", "the tool"},
};
constexpr Argument sing_arguments[] = {
    {optional, "verse",  "WORD...", "what to sing", {}, {.repeats = true, .known_after = known_verses}},
};
constexpr Argument options[] = {
    {option,   "colour", "WHEN",   "colour of the output", colours, {.letter = 'c'}},
    cli::help_option,
    cli::version_option,
};
constexpr Argument reading_options[] = {
    {flag,     "repeat", "N",      "repeat, N times if given"},
};

constexpr cli::Command commands[] = {
    //path            summary               access   example               arguments
    {"plant",        "put in a plant",     either,  "rose red --depth 3", plant_arguments, "Digs first. Then waters."},
    {"gate open",    "open the gate",      acts,    ""},
    {"gate unlock",  "unlock the gate",    acts,    "-",                  unlock_arguments},
    {"gate show",    "show the gate",      reads,   "--repeat=2"},
    {"sing",         "sing",               acts,    "la la",              sing_arguments},
    {"run",          "run a tool",         acts,    "-- rake --fast",     run_arguments},
};

constexpr cli::Group groups[]     = {{"gate", "the garden's gate"}};
constexpr cli::Term examples[]    = {{"garden plant rose", "one rose"}, {".dots 'and' \\back", "odd characters"}};
constexpr cli::Term exit_status[] = {{"0", "done"}, {"9", "frost"}};
constexpr cli::Term environment[] = {{"GARDEN", "where it is"}};
constexpr cli::Term files[]       = {{"/tmp/garden", "the map"}};

// clang-format on

} // namespace

const cli::Program sample{
    .name = "garden",
    .version = "1.2",
    .summary = "look after a garden",
    .description = "Plants. Waters.",
    .groups = groups,
    .commands = commands,
    .options = options,
    .reading_options = reading_options,
    .examples = examples,
    .exit_status = exit_status,
    .environment = environment,
    .files = files,
    .see_also = "rake(1)",
};
