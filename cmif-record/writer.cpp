#include "writer.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace cmif_record
{
namespace
{

class Writer
{
public:
    Writer(Ring &ring, int file, EntryLines lines)
        : ring_(ring), file_(file), lines_(std::move(lines))
    {
    }

    // Of all that lies in the ring.
    void write_all()
    {
        constexpr std::size_t part = 1 << 16;
        report_lost();
        std::string text;
        for (Ring::Item item; ring_.take(item);) {
            text += lines_.line_of(item);
            if (text.size() < part)
                continue;
            lost_ += write(text);
            ring_.written();
            text.clear();
        }
        lost_ += write(text);
        ring_.written();
    }

private:
    void report_lost()
    {
        lost_ += ring_.take_lost();
        if (lost_ > 0 && write(lines_.lost_line(ring_.now(), getpid(), lost_)) == 0)
            lost_ = 0;
    }

    // How many of the lines could not be written: the disk is full, perhaps. One that was begun is
    // taken back.
    unsigned write(std::string_view text)
    {
        while (!text.empty()) {
            const ssize_t size = ::write(file_, text.data(), text.size());
            if (size == -1 && errno != EINTR) {
                take_back_begun_line();
                return static_cast<unsigned>(std::count(text.begin(), text.end(), '\n'));
            }
            const std::size_t done = size == -1 ? 0 : static_cast<std::size_t>(size);
            at_line_start_ = done > 0 ? text[done - 1] == '\n' : at_line_start_;
            text.remove_prefix(done);
        }
        return 0;
    }

    void take_back_begun_line()
    {
        if (!at_line_start_ && ftruncate(file_, end_of_last_line()) == 0)
            at_line_start_ = true;
    }

    off_t end_of_last_line() const
    {
        off_t end = lseek(file_, 0, SEEK_END);
        for (char last = 0; end > 0 && pread(file_, &last, 1, end - 1) == 1 && last != '\n'; --end)
            continue;
        return end;
    }

    Ring &ring_;
    int file_;
    EntryLines lines_;
    unsigned lost_ = 0; // not told yet
    bool at_line_start_ = true;
};

// Signals for the daemon, its terminal or its group must not end the recording before it.
void detach()
{
    setsid();
    for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGPIPE, SIGXFSZ})
        std::signal(number, SIG_IGN);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    prctl(PR_SET_NAME, "record-writer");
    if (chdir("/") != 0) {} // so that no file system is kept in use
}

void close_from(unsigned first, unsigned last)
{
    constexpr unsigned usual_limit = 1024;
    if (close_range(first, last, 0) == 0)
        return;
    for (unsigned file = first; file <= std::min(last, usual_limit); ++file) // an old kernel
        close(static_cast<int>(file));
}

// Nothing else of this process stays open, whose readers would wait for the writer too.
WriterFiles keep_only(const WriterFiles &files)
{
    const int ring = dup2(files.ring, files.ring_number);
    const int lines = fcntl(files.lines, F_DUPFD, ring + 1);
    close_from(0, static_cast<unsigned>(ring) - 1);
    close_from(static_cast<unsigned>(ring) + 1, static_cast<unsigned>(lines) - 1);
    close_from(static_cast<unsigned>(lines) + 1, ~0U);
    for (int file = 0; file <= STDERR_FILENO; ++file)
        open("/dev/null", O_RDWR);
    return {ring, ring, lines};
}

// Every process that has the ring shares a lock on it, until its memory is gone: it needs no more
// than that to be known to have ended.
[[noreturn]] void write_until_end(const WriterFiles &given, const EntryLines &lines) noexcept
{
    constexpr useconds_t interval = 10'000;
    detach();
    const WriterFiles files = keep_only(given);
    Ring *const ring = Ring::map(files.ring);
    if (!ring)
        _exit(1);
    Writer writer(*ring, files.lines, lines);
    while (flock(files.ring, LOCK_EX | LOCK_NB) != 0) {
        writer.write_all();
        if (!ring->is_half_full())
            usleep(interval);
    }
    writer.write_all();
    _exit(0);
}

} // namespace

// Through a process between them, so that the program that this one becomes has no unknown child.
pid_t start_writer(const WriterFiles &files, const EntryLines &lines)
{
    std::array<int, 2> number{};
    if (pipe2(number.data(), O_CLOEXEC) != 0)
        throw std::system_error(errno, std::generic_category(), "pipe");
    const pid_t between = fork();
    if (between == 0) {
        const pid_t writer = fork();
        if (writer == 0)
            write_until_end(files, lines);
        _exit(write(number[1], &writer, sizeof writer) == sizeof writer ? 0 : 1);
    }
    close(number[1]);
    pid_t writer = -1;
    const bool started = read(number[0], &writer, sizeof writer) == sizeof writer && writer != -1;
    close(number[0]);
    waitpid(between, nullptr, 0);
    if (!started)
        throw std::system_error(EAGAIN, std::generic_category(), "no process to record with");
    return writer;
}

} // namespace cmif_record
