// The debug log's files.
#ifndef CMIFCTL_VERBS_LOG_FILES_H
#define CMIFCTL_VERBS_LOG_FILES_H

#include "client/file.h"
#include "cmif/cmif.h"

#include <cstddef>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace cmifctl
{

// The current log and the two older ones.
constexpr const char *log_generations[]{CMIF_LOG_FILE, CMIF_LOG_FILE_1, CMIF_LOG_FILE_2};

// The last lines of a log, at most `count`. Reads from the file's end. Fails with exit 6 when there
// is no such log, and when it is not a regular file.
std::vector<std::string> last_log_lines(const char *path, std::size_t count);

// Its size; 0 when there is none. Fails when it is not a regular file.
off_t log_size(const char *path);

// Why a process of this user can't write the log.
struct LogObstacle {
    std::string text;
    const char *hint;
};
std::optional<LogObstacle> log_obstacle();

constexpr const char *log_directory = "/data";

// Prints the current log as it grows. A rotation makes it another file.
class LogFollower
{
public:
    // Prints the last `count` lines.
    void print_last(std::size_t count);
    // Prints the lines added since the last call.
    void print_new();

private:
    client::File open_current();

    ino_t inode_ = 0;
    off_t position_ = 0;
};

} // namespace cmifctl

#endif
