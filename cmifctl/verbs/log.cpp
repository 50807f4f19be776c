#include "cmif/cmif.h"
#include "cmifctl/output/terminal.h"
#include "cmifctl/output/text.h"
#include "settings.h"
#include "verbs.h"

#include <algorithm>
#include <chrono>
#include <deque>
#include <fstream>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace cmifctl
{

namespace
{

constexpr const char *generations[]{"/data/debug_lte.txt", "/data/debug_lte_1.txt",
                                    "/data/debug_lte_2.txt"};
constexpr const char *current = generations[0];

Json log_lines(const char *path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw Failure(Exit::no_file, std::string("there is no log ") + path,
                      "'cmifctl log enable' switches it on for programs that start then.");
    Json lines = Json::array();
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    return lines;
}

// One generation of the log as it grows; a rotation makes it another file.
class Follower
{
public:
    // Writes what is new to standard output.
    void look()
    {
        if (look_at_file())
            show_from_position();
    }

    // Skips what is there already, but for its last lines.
    void skip(std::size_t kept)
    {
        look_at_file();
        std::ifstream file(current, std::ios::binary);
        std::deque<std::string> last;
        for (std::string line; std::getline(file, line) && !file.eof();) {
            position_ += static_cast<off_t>(line.size() + 1);
            last.push_back(std::move(line));
            if (last.size() > kept)
                last.pop_front();
        }
        for (const std::string &line : last)
            print(safe(line) + "\n");
    }

private:
    // False when there is none just now; another file, or a shorter one, is read from its start.
    bool look_at_file()
    {
        struct stat now {
        };
        if (stat(current, &now) != 0)
            return false;
        if (now.st_ino != inode_ || now.st_size < position_)
            position_ = 0;
        inode_ = now.st_ino;
        return true;
    }

    void show_from_position()
    {
        std::ifstream file(current, std::ios::binary);
        file.seekg(position_);
        for (std::string line; std::getline(file, line) && !file.eof();) { // whole lines only
            print(safe(line) + "\n");
            position_ += static_cast<off_t>(line.size() + 1);
        }
    }

    ino_t inode_ = 0;
    off_t position_ = 0;
};

void switch_log(Invocation &run, bool on)
{
    change_setting(run, "debug_lte_enable", on ? "1" : "0");
    run.report.field("log", {"enabled", on});
    note("programs that start from now on see it; 'cmifctl config save' keeps it over a restart");
}

// A line of over 128 characters, which the library writes to the file at once.
std::string ruler(const std::string &text)
{
    constexpr std::size_t length = 140;
    std::string line = std::string("-- [") + get_time() + "] " + text + " ";
    line.append(length - std::min(length, line.size()), '-');
    return line + "\n";
}

} // namespace

void log_show(Invocation &run)
{
    constexpr int most = 1'000'000;
    const int generation = run.arguments.has("generation")
                               ? run.arguments.number("generation", "--generation", 0, 2)
                               : 0;
    const bool some = run.arguments.has("lines");
    const int wanted = some ? run.arguments.number("lines", "--lines", 1, most) : 0;
    Json lines = log_lines(generations[generation]);
    if (some)
        lines.erase(lines.begin(),
                    lines.end() - std::min<std::ptrdiff_t>(wanted, std::ssize(lines)));
    run.report.data("file", generations[generation]);
    for (const Json &line : lines)
        run.report.line(line.get<std::string>());
    run.report.data("lines", std::move(lines));
}

void log_follow(Invocation &run)
{
    if (run.options.json)
        throw Failure(Exit::usage, "a log that goes on for ever is no JSON document",
                      "'cmifctl --json log show' gives what there is.");
    constexpr std::size_t kept = 10;
    if (access(current, F_OK) != 0)
        note(std::string("there is no log ") + current +
             " yet; 'cmifctl log enable' switches it on for programs that start then");
    Follower follower;
    follower.skip(kept);
    for (;;) {
        follower.look();
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
    }
}

void log_mark(Invocation &run)
{
    constexpr std::size_t most = 100;
    const std::string text = run.arguments.text("text");
    if (text.size() > most || safe(text) != text)
        throw Failure(Exit::invalid, "that text doesn't fit a line of the log",
                      "At most 100 bytes, all of them visible.");
    if (whole_number(setting(run, "debug_lte_enable")).value_or(0) == 0)
        throw Failure(Exit::invalid, "the log is off", "Switch it on with 'cmifctl log enable'.");
    call(run.options, {.request = no_request("shared_debug_lte_write_log_file"),
                       .body =
                           [&text](Json &) {
                               shared_debug_lte_write_log_file("%s", ruler(text).c_str());
                               return 0;
                           },
                       .logs = true});
    run.report.field("log", {"marked", text});
}

void log_rotate(Invocation &run)
{
    const Answer answer =
        call(run.options, {.request = no_request("shared_debug_lte_backup_log_file"),
                           .body = [](Json &) { return shared_debug_lte_backup_log_file(); },
                           .errors_muted = true});
    if (answer.result != 0)
        throw Failure(Exit::other,
                      std::string("the new log ") + current + " could not be written (status " +
                          std::to_string(answer.result) + ")",
                      "Check that /data is there and may be written to.");
    run.report.field("log", {"result", "the log is rotated, a new one is started"});
}

void log_enable(Invocation &run)
{
    switch_log(run, true);
}

void log_disable(Invocation &run)
{
    switch_log(run, false);
}

} // namespace cmifctl
