#include "start.h"

#include "format.h"
#include "writer.h"

#include <array>
#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace cmif_record
{
namespace
{

[[noreturn]] void fail(const std::string &what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

std::string text_of(const timespec &time)
{
    tm parts{};
    gmtime_r(&time.tv_sec, &parts);
    std::array<char, sizeof "2000-01-01T00:00:00"> text{};
    std::strftime(text.data(), text.size(), "%FT%T", &parts);
    const std::string fraction = std::to_string(1000 + time.tv_nsec / 1'000'000);
    return text.data() + ("." + fraction.substr(1)) + "Z";
}

std::string head_line(const RecordingOptions &options)
{
    timespec started{};
    if (!options.repeatable)
        clock_gettime(CLOCK_REALTIME, &started);
    JsonLine head;
    head.add("format", format_name);
    head.add("version", format_version);
    head.add("started", text_of(started));
    head.add("secrets", options.with_secrets ? "kept" : "replaced");
    return head.finish();
}

std::optional<StandInKey> key_of(const RecordingOptions &options)
{
    if (options.with_secrets)
        return std::nullopt;
    return options.repeatable ? StandInKey{*options.repeatable, 0} : random_key();
}

int create_file(const std::string &file, const std::string &head)
{
    const int created =
        open(file.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (created == -1 && errno == EISDIR)
        throw std::runtime_error(file + " is a directory: name the file to write in it, " +
                                 (std::filesystem::path(file) / "trouble.jsonl").string());
    if (created != -1 && write(created, head.data(), head.size()) == ssize_t(head.size()))
        return created;
    const int reason = errno;
    close(created);
    errno = reason;
    fail(file);
}

// Out of the way, if there may be so many files: a program may expect the first free numbers for
// itself.
int moved_up(int file)
{
    constexpr int high = 200;
    const int moved = file == -1 ? -1 : fcntl(file, F_DUPFD_CLOEXEC, high);
    if (moved == -1)
        return file;
    close(file);
    return moved;
}

int create_ring()
{
    const int file = moved_up(memfd_create("cmif-record", MFD_CLOEXEC));
    if (file == -1 || flock(file, LOCK_SH) != 0)
        fail("no memory to record in");
    Ring::create(file);
    return file;
}

} // namespace

RingPlace start_recording(const std::string &file, const RecordingOptions &options)
{
    const int lines = create_file(file, head_line(options));
    const int ring = create_ring();
    const int opened_again =
        open(("/proc/self/fd/" + std::to_string(ring)).c_str(), O_RDWR | O_CLOEXEC);
    if (opened_again == -1)
        fail("/proc/self/fd");
    const pid_t writer = start_writer({opened_again, ring, lines},
                                      {key_of(options), options.repeatable.has_value()});
    close(opened_again);
    close(lines);
    return {ring, writer};
}

std::unique_ptr<Recording> open_recording(const RingPlace &place)
{
    Ring *const ring = Ring::map(place.file);
    if (!ring)
        fail("no memory to record in");
    return std::make_unique<Recording>(ring);
}

} // namespace cmif_record
