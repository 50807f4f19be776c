#include "log_files.h"

#include "client/failure.h"
#include "cmifctl/output/terminal.h"
#include "cmifctl/output/terminal_text.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace cmifctl
{
namespace
{

using client::Exit;
using client::Failure;
using client::File;

constexpr off_t block_size = 65536;

struct stat status_of(const File &file)
{
    struct stat status {
    };
    fstat(file.fd(), &status);
    return status;
}

// No file when there is none. O_NONBLOCK: opening a FIFO would wait for its writer.
File open_log(const char *path)
{
    File file(open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file && errno == ENOENT)
        return file;
    if (!file)
        throw Failure(Exit::other, std::string("can't read ") + path + ": " + std::strerror(errno),
                      "'cmifctl doctor' shows more.");
    if (!S_ISREG(status_of(file).st_mode))
        throw Failure(Exit::other, std::string(path) + " is not a regular file",
                      std::string("Remove it: rm -r ") + path);
    return file;
}

std::string read_at(const File &file, off_t from, off_t size)
{
    std::string bytes(static_cast<std::size_t>(size), '\0');
    const ssize_t got = pread(file.fd(), bytes.data(), bytes.size(), from);
    bytes.resize(static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
    return bytes;
}

// Where the last `count` lines before `end` begin. The newline that ends the last one is not
// counted. A file that holds no lines is not searched as a whole.
off_t start_of_last_lines(const File &file, off_t end, std::size_t count)
{
    constexpr long long long_line = 4096; // the library writes at most 255 bytes at a time
    const auto limit =
        static_cast<off_t>(std::max<long long>(0, end - static_cast<long long>(count) * long_line));
    std::size_t left = count;
    for (off_t block_end = end - 1; block_end > limit;) {
        const off_t block = std::max(limit, block_end - block_size);
        const std::string bytes = read_at(file, block, block_end - block);
        for (std::size_t i = bytes.size(); i > 0; --i)
            if (bytes[i - 1] == '\n' && --left == 0)
                return block + static_cast<off_t>(i);
        block_end = block;
    }
    return limit;
}

// Calls `each` with the whole lines from `position` on, which moves past them. The last one may
// still be being written.
template <class Each>
void for_each_line(const File &file, off_t &position, const Each &each)
{
    std::string pending;
    off_t next = position;
    for (std::string bytes; !(bytes = read_at(file, next, block_size)).empty();) {
        next += static_cast<off_t>(bytes.size());
        pending += bytes;
        std::size_t begin = 0;
        for (std::size_t end = 0; (end = pending.find('\n', begin)) != std::string::npos;
             begin = end + 1) {
            position += static_cast<off_t>(end + 1 - begin);
            each(pending.substr(begin, end - begin));
        }
        pending.erase(0, begin);
    }
}

void print_line(const std::string &line)
{
    print(escape_controls(line) + "\n");
}

} // namespace

std::vector<std::string> last_log_lines(const char *path, std::size_t count)
{
    const File file = open_log(path);
    if (!file)
        throw Failure(Exit::no_file, std::string("there is no log ") + path,
                      "'cmifctl log enable' switches it on for programs that start afterwards.");
    const off_t end = status_of(file).st_size;
    off_t position = start_of_last_lines(file, end, count);
    std::vector<std::string> lines;
    for_each_line(file, position, [&lines](std::string line) { lines.push_back(std::move(line)); });
    if (position < end && lines.size() < count) // a line that is being written
        lines.push_back(read_at(file, position, end - position));
    return lines;
}

off_t log_size(const char *path)
{
    const File file = open_log(path);
    return file ? status_of(file).st_size : 0;
}

std::optional<LogObstacle> log_obstacle()
{
    if (access(log_directory, F_OK) != 0)
        return LogObstacle{"there is no directory /data",
                           "Create it or mount it; the log has no other place."};
    struct stat found {
    };
    const bool exists = stat(CMIF_LOG_FILE, &found) == 0;
    if (exists && S_ISDIR(found.st_mode))
        return LogObstacle{CMIF_LOG_FILE " is a directory", "Remove it: rm -r " CMIF_LOG_FILE};
    const char *place = exists ? CMIF_LOG_FILE : log_directory;
    if (access(place, W_OK) != 0)
        return LogObstacle{std::string("this user can't write ") + place + ": " +
                               std::strerror(errno),
                           "Run it as a user who may write there."};
    struct statvfs space {
    };
    if (statvfs(log_directory, &space) == 0 && space.f_blocks > 0 && space.f_bavail == 0)
        return LogObstacle{"/data is full",
                           "'cmifctl log rotate' drops the oldest log; three times, all of them."};
    return std::nullopt;
}

void LogFollower::print_last(std::size_t count)
{
    const File file = open_current();
    if (!file)
        return;
    position_ = start_of_last_lines(file, status_of(file).st_size, count);
    for_each_line(file, position_, print_line);
}

void LogFollower::print_new()
{
    if (const File file = open_current())
        for_each_line(file, position_, print_line);
}

// No file when there is no log. Another file, or a shorter one, is read from its start.
File LogFollower::open_current()
{
    File file = open_log(CMIF_LOG_FILE);
    if (!file)
        return file;
    const struct stat now = status_of(file);
    if (now.st_ino != inode_ || now.st_size < position_)
        position_ = 0;
    inode_ = now.st_ino;
    return file;
}

} // namespace cmifctl
