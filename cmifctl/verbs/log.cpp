#include "cli/numbers.h"
#include "cmifctl/calls.h"
#include "cmifctl/output/terminal.h"
#include "cmifctl/output/terminal_text.h"
#include "log_files.h"
#include "settings.h"
#include "verbs.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <unistd.h>

namespace cmifctl
{
namespace
{

constexpr const char *enable_setting = "debug_lte_enable";

void switch_log(Context &context, bool on)
{
    change_setting(context, enable_setting, on ? "1" : "0");
    context.report.result(on ? "enabled" : "disabled", std::string("The log is ") +
                                                           (on ? "on" : "off") +
                                                           " for programs that start from now on.");
    note("'cmifctl config save' makes it persistent");
}

// A line of more than 128 characters, which the library writes to the file at once.
std::string long_line(const std::string &text)
{
    constexpr std::size_t length = 140;
    std::string line = std::string("-- [") + get_time() + "] " + text + " ";
    line.append(length - std::min(length, line.size()), '-');
    return line + "\n";
}

// The library does not report that it couldn't write.
[[noreturn]] void fail_not_written()
{
    if (const auto obstacle = log_obstacle())
        throw Failure(Exit::other, "the log was not written: " + obstacle->text, obstacle->hint);
    throw Failure(Exit::other, "the log was not written: " CMIF_LOG_FILE " did not grow",
                  "'cmifctl doctor' may show why.");
}

} // namespace

void log_show(Context &context)
{
    constexpr long long max_lines = 1'000'000;
    const Arguments &given = context.arguments;
    const auto generation =
        given.has("generation") ? given.number("generation", "--generation", 0, 2) : 0;
    const auto wanted =
        given.has("lines") ? given.number("lines", "--lines", 1, max_lines) : max_lines;
    std::vector<std::string> lines =
        last_log_lines(log_generations[generation], static_cast<std::size_t>(wanted));
    for (const std::string &line : lines)
        context.report.line(line);
    context.report.data("file", log_generations[generation]);
    context.report.data("lines", std::move(lines));
}

void log_follow(Context &context)
{
    if (context.output.json())
        throw Failure(Exit::usage, "'log follow' cannot produce JSON: its output has no end",
                      "'cmifctl --json log show' gives the log as it is.");
    if (access(CMIF_LOG_FILE, F_OK) != 0)
        note("there is no log " CMIF_LOG_FILE
             " yet; 'cmifctl log enable' switches it on for programs that start afterwards");
    constexpr std::size_t context_lines = 10;
    LogFollower follower;
    follower.print_last(context_lines);
    for (;;) {
        follower.print_new();
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
    }
}

void log_mark(Context &context)
{
    constexpr std::size_t max_bytes = 100;
    const std::string text = context.arguments.text("text");
    if (text.size() > max_bytes || escape_controls(text) != text)
        throw Failure(Exit::invalid, "the text does not fit a line of the log",
                      "At most 100 bytes, printable characters only.");
    if (cli::whole_number(setting(context, enable_setting)).value_or(0) == 0)
        throw Failure(Exit::invalid, "the log is off", "Switch it on with 'cmifctl log enable'.");
    const off_t before = log_size(CMIF_LOG_FILE);
    client::call(context.options, {.request = no_request("shared_debug_lte_write_log_file"),
                                   .body =
                                       [&text](Json &) {
                                           shared_debug_lte_write_log_file("%s",
                                                                           long_line(text).c_str());
                                           return 0;
                                       },
                                   .logs = true});
    if (log_size(CMIF_LOG_FILE) <= before)
        fail_not_written();
    context.report.result("marked", "The text is in the log.");
}

void log_rotate(Context &context)
{
    const Answer answer = client::call(
        context.options, {.request = no_request("shared_debug_lte_backup_log_file"),
                          .body = [](Json &) { return shared_debug_lte_backup_log_file(); },
                          .mute_stderr = true}); // its shell commands complain about missing files
    if (answer.result != 0)
        throw Failure(Exit::other,
                      "the new log " CMIF_LOG_FILE " could not be written (status " +
                          std::to_string(answer.result) + ")",
                      "Check that /data exists and can be written.");
    context.report.result("rotated", "The log was rotated and a new one started.");
}

void log_enable(Context &context)
{
    switch_log(context, true);
}

void log_disable(Context &context)
{
    switch_log(context, false);
}

} // namespace cmifctl
