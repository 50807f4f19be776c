#include "recording.h"

#include "cmif/cmif.h"
#include "current_ids.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace cmif_record
{
namespace
{

class ErrnoGuard
{
public:
    ErrnoGuard() = default;
    ~ErrnoGuard() { errno = value_; }
    ErrnoGuard(const ErrnoGuard &) = delete;
    ErrnoGuard &operator=(const ErrnoGuard &) = delete;

private:
    int value_ = errno;
};

// The system calls themselves: the C library's functions are points of cancellation, and the
// program may have functions of these names.
std::size_t read_file(const char *path, char *text, std::size_t room)
{
    const int file =
        static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, O_RDONLY | O_CLOEXEC | O_NONBLOCK, 0));
    const long size = file == -1 ? 0 : syscall(SYS_read, file, text, room);
    syscall(SYS_close, file);
    return static_cast<std::size_t>(std::max(size, 0L));
}

} // namespace

Recording::~Recording()
{
    flush();
    Ring::unmap(ring_);
}

void Recording::append(Entry entry, std::string_view name, std::string_view text)
{
    const ErrnoGuard errno_guard;
    const CurrentIds ids = current_ids();
    entry.process = ids.process;
    entry.thread = ids.thread;
    ring_->append(entry, name, text);
}

// Without its arguments, which may hold secrets.
void Recording::add_process()
{
    const ErrnoGuard errno_guard;
    std::array<char, PATH_MAX> program{};
    const ssize_t size = readlink("/proc/self/exe", program.data(), program.size());
    const std::string_view path(program.data(), size > 0 ? std::size_t(size) : 0);
    append({Entry::Kind::process}, "", path);
}

void Recording::add(Queue queue, Action action, const Record &record)
{
    if (queue.channel == Channel::at && queue.direction == Direction::reply &&
        action == Action::sent && record.code == CMIF_AT_SEARCH)
        add_provider_list();
    append({Entry::Kind::record, queue, action, record.code}, "", record.payload);
}

// The result of a search is a file, and complete before the reply.
void Recording::add_provider_list()
{
    const ErrnoGuard errno_guard;
    std::array<char, 1 << 16> text;
    const std::size_t size = read_file(CMIF_PROVIDER_LIST_FILE, text.data(), text.size());
    append({Entry::Kind::file}, CMIF_PROVIDER_LIST_FILE, {text.data(), size});
}

void Recording::add_setting(std::string_view key, std::string_view value)
{
    append({Entry::Kind::setting}, key, value);
}

void Recording::add_failure()
{
    append({Entry::Kind::failed});
}

void Recording::flush() const
{
    const ErrnoGuard errno_guard;
    ring_->wait_until_written();
}

} // namespace cmif_record
