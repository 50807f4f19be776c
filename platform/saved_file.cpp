#include "saved_file.h"

#include "directory_lock.h"
#include "error_report.h"
#include "file.h"
#include "store_directory.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace host_store
{
namespace
{

std::string saved_path()
{
    return store_directory() + "/saved.conf";
}

Saved read_saved()
{
    const File file(saved_path(), O_RDONLY | O_NOFOLLOW);
    if (!file.is_open() && errno == ENOENT)
        return {};
    std::string text;
    if (!file.is_open() && errno == ELOOP)
        return {{}, "a symbolic link, which no save makes"};
    if (!file.is_open())
        return {{}, std::strerror(errno)};
    if (!file.is_readable_file())
        return {{}, "not a file that a save has written"};
    if (!file.read_all(text))
        return {{}, std::strerror(errno)};
    return from_text(text);
}

// Gives the file a second, unused name, under which it stays when a save takes its first one.
bool keep_damaged()
{
    for (int number = 1; number < 1000; ++number) {
        const std::string other = saved_path() + ".damaged-" + std::to_string(number);
        if (link(saved_path().c_str(), other.c_str()) == 0) {
            report_error(saved_path(), "could not be read completely", "it is kept as " + other);
            return true;
        }
        if (errno != EEXIST)
            return false;
    }
    return false;
}

bool replace(const std::string &text)
{
    const std::string next = saved_path() + ".new";
    unlink(next.c_str()); // left by a process that was killed here
    const File file(next, O_WRONLY | O_CREAT | O_EXCL);
    if (file.is_open() && file.write_all(text) && rename(next.c_str(), saved_path().c_str()) == 0)
        return true;
    const int reason = errno;
    unlink(next.c_str());
    errno = reason;
    return false;
}

} // namespace

Entries load_saved()
{
    Saved saved = read_saved();
    if (!saved.error.empty()) {
        report_error(
            saved_path() + ": " + saved.error, "this is skipped",
            "correct it and restart cmif-sim; a save replaces the file and keeps this one");
    }
    return std::move(saved.entries);
}

bool save(const DirectoryLock &directory, const Entries &entries)
{
    if ((read_saved().error.empty() || keep_damaged()) && replace(to_text(entries)) &&
        directory.sync())
        return true;
    report_error(saved_path(), std::string("not saved: ") + std::strerror(errno),
                 "make room or " + std::string(store_hint));
    return false;
}

} // namespace host_store
