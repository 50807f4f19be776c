// A recording that is being written: JSON Lines, each with one write at the end of the file, so
// that processes and threads can share it.
#ifndef CMIF_RECORD_RECORDING_H
#define CMIF_RECORD_RECORDING_H

#include "record_members.h"

#include <atomic>
#include <sys/types.h>

namespace cmif_record
{

inline constexpr const char *format_name = "cmif-record";
inline constexpr int format_version = 1;

// What the processes of one recording share.
struct RecordingSettings {
    std::string path;              // absolute
    std::optional<StandInKey> key; // none: secrets are kept
    long long start = 0;           // of the monotonic clock, in nanoseconds
};

// Creates the file, for its owner alone, and writes the head line. Fails with std::system_error,
// whose text names the file.
RecordingSettings create_recording(const std::string &file, bool with_secrets);

// Whether this process took the record from a queue or put it there.
enum class Action { received, sent };

struct FileIdentity {
    std::uint32_t device_major, device_minor;
    std::uint64_t inode;

    bool operator==(const FileIdentity &) const = default;
};

// Nothing here fails, changes errno or is a point where a thread can be cancelled: what can't be
// written is lost.
class Recording
{
public:
    explicit Recording(RecordingSettings settings);
    Recording(const Recording &) = delete;
    Recording &operator=(const Recording &) = delete;

    void add_process();
    void add(Queue queue, Action action, const Record &record);
    void add_setting(std::string_view key, std::string_view value);
    // The line before, of this thread, did not happen after all.
    void add_failure();

private:
    JsonLine start_line(const char *type) const;
    void add_provider_list();
    void write(JsonLine &line);
    int usable_file();

    RecordingSettings settings_;
    std::atomic<int> file_ = -1;
    FileIdentity identity_{};
};

} // namespace cmif_record

#endif
