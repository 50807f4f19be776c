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

bool log_is_on(const Look &look)
{
    return cli::whole_number(look.store.value("debug_lte_enable")).value_or(0) != 0;
}

bool is_irregular(const char *path)
{
    struct stat found {
    };
    return lstat(path, &found) == 0 && !S_ISREG(found.st_mode);
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

std::string kibibytes(unsigned long long bytes)
{
    return std::to_string(bytes / 1024) + " KiB";
}

} // namespace

Texts checks::irregular_files(const Look &)
{
    Texts texts;
    for (const char *path : {CMIF_QMI_READY_FILE, CMIF_PROFILE_BUSY_FILE, CMIF_PROVIDER_LIST_FILE,
                             CMIF_LOG_FILE, CMIF_LOG_FILE_1, CMIF_LOG_FILE_2})
        if (is_irregular(path))
            texts.push_back(std::string(path) +
                            " is not a regular file: a program that opens it may block");
    return texts;
}

Texts checks::stale_profile_marker(const Look &look)
{
    if (!look.profile_change || look.profile_change->worked_on)
        return {};
    return {CMIF_PROFILE_BUSY_FILE " marks a change of the profile that no process works on; it "
                                   "keeps the data connection from being started and stopped"};
}

void checks::remove_profile_marker(const Look &)
{
    const client::RequestCode change{Channel::qmi, CMIF_QMI_MODIFY_PROFILE};
    try {
        const client::CodeLock lock = client::lock_codes({.timeout = 1}, {change});
        unlink(CMIF_PROFILE_BUSY_FILE);
    } catch (const Failure &) { // a change has just begun
    }
}

Texts checks::long_profile_change(const Look &look)
{
    constexpr double long_time = 60; // seconds; the daemon waits for a connection to end
    if (!look.profile_change || !look.profile_change->worked_on ||
        look.profile_change->age < long_time)
        return {};
    return {"a change of the profile has been in progress for more than " +
            std::to_string(static_cast<long>(long_time)) + " s"};
}

Texts checks::unwritable_log(const Look &look)
{
    if (!log_is_on(look))
        return {};
    const auto obstacle = log_obstacle();
    return obstacle ? Texts{"the debug log is on, and " + obstacle->text} : Texts{};
}

Texts checks::little_space(const Look &)
{
    constexpr unsigned long long enough = 1024ULL * 1024;
    constexpr unsigned long long large = 16 * enough;
    struct statvfs space {
    };
    const unsigned long long size = size_of_logs();
    Texts texts;
    if (size >= large)
        texts.push_back("the debug log takes " + kibibytes(size));
    if (statvfs(log_directory, &space) == 0 && space.f_blocks > 0 &&
        static_cast<unsigned long long>(space.f_bavail) * space.f_frsize < enough)
        texts.push_back("less than " + kibibytes(enough) + " is free in /data");
    return texts;
}

} // namespace cmifctl
