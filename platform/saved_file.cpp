#include "saved_file.h"

#include "error_report.h"
#include "store_directory.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace host_store
{

namespace
{

constexpr off_t size_limit = 64 << 20; // more than the running configuration can hold

std::string saved_path()
{
    return store_directory() + "/saved.conf";
}

class File
{
public:
    // Never waits: a pipe of that name is not an answer.
    File(const std::string &path, int flags)
        : descriptor_(open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK, S_IRUSR | S_IWUSR))
    {
    }
    ~File()
    {
        if (descriptor_ >= 0)
            close(descriptor_);
    }
    File(const File &) = delete;
    File &operator=(const File &) = delete;

    bool is_open() const { return descriptor_ >= 0; }
    bool is_readable_file() const
    {
        struct stat found = {};
        return fstat(descriptor_, &found) == 0 && S_ISREG(found.st_mode) &&
               found.st_size <= size_limit;
    }
    // Appends the whole file to `text`, or says in errno why not.
    bool read_all(std::string &text) const
    {
        std::array<char, 16384> part{};
        for (;;) {
            const ssize_t count = read(descriptor_, part.data(), part.size());
            if (count > 0)
                text.append(part.data(), static_cast<std::size_t>(count));
            else if (count == 0)
                return true;
            else if (errno != EINTR)
                return false;
        }
    }
    bool write_all(std::string_view text) const
    {
        while (!text.empty()) {
            const ssize_t count = write(descriptor_, text.data(), text.size());
            if (count >= 0)
                text.remove_prefix(static_cast<std::size_t>(count));
            else if (errno != EINTR)
                return false;
        }
        return fsync(descriptor_) == 0;
    }

private:
    int descriptor_;
};

Saved read_saved()
{
    const File file(saved_path(), O_RDONLY);
    if (!file.is_open() && errno == ENOENT)
        return {};
    std::string text;
    if (!file.is_open())
        return {{}, std::strerror(errno)};
    if (!file.is_readable_file())
        return {{}, "not a file that a save has written"};
    if (!file.read_all(text))
        return {{}, std::strerror(errno)};
    return from_text(text);
}

// Gives the file a second, unused name.
bool set_aside()
{
    for (int number = 1; number < 1000; ++number) {
        const std::string other = saved_path() + ".damaged-" + std::to_string(number);
        if (link(saved_path().c_str(), other.c_str()) == 0) {
            complain(saved_path(), "could not be read in full", "it is kept as " + other);
            return true;
        }
        if (errno != EEXIST)
            return false;
    }
    return false;
}

bool replace(const std::string &text)
{
    const std::string fresh = saved_path() + ".new";
    unlink(fresh.c_str()); // left by a process that was killed here
    const File file(fresh, O_WRONLY | O_CREAT | O_EXCL);
    if (file.is_open() && file.write_all(text) && rename(fresh.c_str(), saved_path().c_str()) == 0)
        return true;
    const int reason = errno;
    unlink(fresh.c_str());
    errno = reason;
    return false;
}

} // namespace

Entries load_saved()
{
    Saved saved = read_saved();
    if (!saved.trouble.empty()) {
        complain(
            saved_path() + ": " + saved.trouble, "this is left out",
            "correct it and start the router anew; a save replaces the file and keeps this one");
    }
    return std::move(saved.entries);
}

bool save(const DirectoryLock &directory, const Entries &entries)
{
    if ((read_saved().trouble.empty() || set_aside()) && replace(to_text(entries)) &&
        directory.sync())
        return true;
    complain(saved_path(), std::string("not saved: ") + std::strerror(errno),
             "make room or " + std::string(choose_another));
    return false;
}

} // namespace host_store
