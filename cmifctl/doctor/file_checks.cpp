#include "checks.h"
#include "cli/numbers.h"
#include "client/call.h"
#include "cmifctl/verbs/log_files.h"

#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace cmifctl
{
namespace
{

bool log_is_on(const Snapshot &snapshot)
{
    return cli::whole_number(snapshot.store.value("debug_lte_enable")).value_or(0) != 0;
}

// What is there in place of a regular file, and what comes of it; empty when nothing is wrong.
std::string irregularity(const char *path)
{
    struct stat found {
    };
    if (lstat(path, &found) != 0 || S_ISREG(found.st_mode))
        return "";
    if (S_ISDIR(found.st_mode))
        return "is a directory: no program can read or write it as a file";
    if (S_ISLNK(found.st_mode))
        return "is a symbolic link: programs use the file that it names";
    return "is not a regular file: a program that opens it may block";
}

unsigned long long size_of_logs()
{
    unsigned long long bytes = 0;
    for (const char *path : log_generations) {
        struct stat found {
        };
        if (lstat(path, &found) == 0 && S_ISREG(found.st_mode))
            bytes += static_cast<unsigned long long>(found.st_size);
    }
    return bytes;
}

constexpr double long_change = 60; // seconds; the daemon waits for a connection to end

bool is_worked_on(const Snapshot &snapshot)
{
    return snapshot.profile_change && snapshot.profile_change->worked_on;
}

std::string kibibytes(unsigned long long bytes)
{
    return std::to_string(bytes / 1024) + " KiB";
}

} // namespace

Problems checks::irregular_files(const Snapshot &)
{
    Problems problems;
    for (const char *path : {CMIF_QMI_READY_FILE, CMIF_PROFILE_BUSY_FILE, CMIF_PROVIDER_LIST_FILE,
                             CMIF_LOG_FILE, CMIF_LOG_FILE_1, CMIF_LOG_FILE_2})
        if (const std::string text = irregularity(path); !text.empty())
            problems.emplace_back(std::string(path) + " " + text, path);
    return problems;
}

Problems checks::stale_profile_marker(const Snapshot &snapshot)
{
    if (!snapshot.profile_change || snapshot.profile_change->worked_on)
        return {};
    return {CMIF_PROFILE_BUSY_FILE " marks a change of the profile that no process works on; it "
                                   "delays each start and stop of the data connection, whose state "
                                   "can't be read meanwhile"};
}

void checks::remove_profile_marker(const Snapshot &)
{
    const client::RequestCode change{Channel::qmi, CMIF_QMI_MODIFY_PROFILE};
    try {
        const client::CodeLock lock = client::lock_codes({.timeout = 1}, {change});
        unlink(CMIF_PROFILE_BUSY_FILE);
    } catch (const Failure &) { // a change has just begun
    }
}

Problems checks::new_profile_change(const Snapshot &snapshot)
{
    const bool present = is_worked_on(snapshot) && snapshot.profile_change->age < long_change;
    return present ? Problems{"a change of the profile is in progress"} : Problems{};
}

Problems checks::long_profile_change(const Snapshot &snapshot)
{
    if (!is_worked_on(snapshot) || snapshot.profile_change->age < long_change)
        return {};
    return {"a change of the profile has been in progress for more than " +
            std::to_string(static_cast<long>(long_change)) + " s"};
}

Problems checks::unwritable_log(const Snapshot &snapshot)
{
    if (!log_is_on(snapshot) || !irregularity(CMIF_LOG_FILE).empty()) // which is told already
        return {};
    const auto obstacle = log_obstacle();
    return obstacle ? Problems{"the debug log is on, and " + obstacle->text} : Problems{};
}

Problems checks::little_space(const Snapshot &)
{
    constexpr unsigned long long enough = 1024ULL * 1024;
    constexpr unsigned long long large = 16 * enough;
    struct statvfs space {
    };
    const unsigned long long size = size_of_logs();
    Problems problems;
    if (size >= large)
        problems.push_back("the debug log takes " + kibibytes(size));
    if (statvfs(log_directory, &space) == 0 && space.f_blocks > 0 &&
        static_cast<unsigned long long>(space.f_bavail) * space.f_frsize < enough)
        problems.push_back("less than " + kibibytes(enough) + " is free in /data");
    return problems;
}

} // namespace cmifctl
