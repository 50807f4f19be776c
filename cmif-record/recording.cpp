#include "recording.h"

#include "cmif/cmif.h"
#include "own_numbers.h"
#include "secret_keys.h"

#include <array>
#include <cerrno>
#include <climits>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace cmif_record
{
namespace
{

class ErrnoKept
{
public:
    ErrnoKept() = default;
    ~ErrnoKept() { errno = value_; }
    ErrnoKept(const ErrnoKept &) = delete;
    ErrnoKept &operator=(const ErrnoKept &) = delete;

private:
    int value_ = errno;
};

long long nanoseconds(const timespec &time)
{
    constexpr long long second = 1'000'000'000;
    return time.tv_sec * second + time.tv_nsec;
}

long long now()
{
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return nanoseconds(time);
}

std::string wall_clock()
{
    timespec time{};
    clock_gettime(CLOCK_REALTIME, &time);
    tm parts{};
    gmtime_r(&time.tv_sec, &parts);
    std::array<char, sizeof "2000-01-01T00:00:00"> text{};
    std::strftime(text.data(), text.size(), "%FT%T", &parts);
    const std::string fraction = std::to_string(1000 + time.tv_nsec / 1'000'000);
    return text.data() + ("." + fraction.substr(1)) + "Z";
}

// The system calls themselves: the C library's functions are points of cancellation, and the
// program may have functions of these names.
int open_for_append(const std::string &path)
{
    return static_cast<int>(
        syscall(SYS_openat, AT_FDCWD, path.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC, 0));
}

// Out of the way: a program may expect the first free numbers for itself.
int moved_up(int file)
{
    constexpr int high = 200;
    const int moved = file == -1 ? -1 : fcntl(file, F_DUPFD_CLOEXEC, high);
    if (moved == -1)
        return file;
    syscall(SYS_close, file);
    return moved;
}

// Nothing but this is asked of the system: after a look at a file's times, the next write to it
// takes three times as long.
FileIdentity identity_of(int file)
{
    struct statx found = {};
    if (statx(file, "", AT_EMPTY_PATH, STATX_INO, &found) != 0)
        return {};
    return {found.stx_dev_major, found.stx_dev_minor, found.stx_ino};
}

std::string contents(const char *path)
{
    const int file =
        static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, O_RDONLY | O_CLOEXEC | O_NONBLOCK, 0));
    std::string text(1 << 16, '\0');
    const long size = file == -1 ? 0 : syscall(SYS_read, file, text.data(), text.size());
    if (file != -1)
        syscall(SYS_close, file);
    text.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return text;
}

} // namespace

RecordingSettings create_recording(const std::string &file, bool with_secrets)
{
    RecordingSettings settings;
    settings.path = std::filesystem::absolute(file);
    if (!with_secrets)
        settings.key = random_key();
    settings.start = now();
    JsonLine head;
    head.add("format", format_name);
    head.add("version", format_version);
    head.add("started", wall_clock());
    head.add("secrets", with_secrets ? "kept" : "replaced");
    const std::string &line = head.finish();
    const int created =
        open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, S_IRUSR | S_IWUSR);
    const bool written =
        created != -1 && ::write(created, line.data(), line.size()) == ssize_t(line.size());
    const int reason = errno;
    if (created != -1)
        close(created);
    if (!written)
        throw std::system_error(reason, std::generic_category(), file);
    return settings;
}

Recording::Recording(RecordingSettings settings) : settings_(std::move(settings))
{
    const ErrnoKept errno_kept;
    file_ = moved_up(open_for_append(settings_.path));
    identity_ = identity_of(file_);
}

JsonLine Recording::start_line(const char *type) const
{
    JsonLine line;
    line.add_seconds("time", now() - settings_.start);
    const OwnNumbers own = own_numbers();
    line.add("process", own.process);
    line.add("thread", own.thread);
    line.add("type", type);
    return line;
}

// Without its arguments, which may hold secrets.
void Recording::add_process()
try {
    const ErrnoKept errno_kept;
    std::array<char, PATH_MAX> program{};
    const ssize_t size = readlink("/proc/self/exe", program.data(), program.size());
    JsonLine line = start_line("process");
    line.add("program", std::string_view(program.data(), size > 0 ? std::size_t(size) : 0));
    write(line);
} catch (const std::exception &) { // no memory
}

void Recording::add(Queue queue, Action action, const Record &record)
try {
    const ErrnoKept errno_kept;
    const bool is_request = queue.direction == Direction::request;
    if (queue.channel == Channel::at && !is_request && action == Action::sent &&
        record.code == CMIF_AT_SEARCH)
        add_provider_list();
    JsonLine line = start_line(is_request ? "request" : "reply");
    line.add("channel", queue.channel == Channel::at ? "at" : "qmi");
    line.add("action", action == Action::received ? "received" : "sent");
    add_record(line, queue, record, settings_.key);
    write(line);
} catch (const std::exception &) {
}

// The result of a search is a file, and complete before the reply.
void Recording::add_provider_list()
{
    JsonLine line = start_line("file");
    line.add("path", CMIF_PROVIDER_LIST_FILE);
    line.add("text", contents(CMIF_PROVIDER_LIST_FILE));
    write(line);
}

void Recording::add_setting(std::string_view key, std::string_view value)
try {
    const ErrnoKept errno_kept;
    const bool hide = settings_.key && is_secret(key, value);
    JsonLine line = start_line("set");
    line.add("key", key);
    line.add("value", hide ? stand_in(*settings_.key, value) : std::string(value));
    write(line);
} catch (const std::exception &) {
}

void Recording::add_failure()
try {
    const ErrnoKept errno_kept;
    JsonLine line = start_line("failed");
    write(line);
} catch (const std::exception &) {
}

// A daemon may close all files that it does not know, and get the same number for one of its own.
int Recording::usable_file()
{
    int file = file_;
    if (file != -1 && identity_of(file) == identity_)
        return file;
    const int opened = moved_up(open_for_append(settings_.path));
    if (opened == -1)
        return -1;
    if (identity_of(opened) == identity_ && file_.compare_exchange_strong(file, opened))
        return opened;
    syscall(SYS_close, opened); // another file by now, or another thread was first
    return -1;
}

void Recording::write(JsonLine &line)
{
    const std::string &text = line.finish();
    const int file = usable_file();
    if (file != -1)
        syscall(SYS_write, file, text.data(), text.size());
}

} // namespace cmif_record
