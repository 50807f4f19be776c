// The start of a recording, and how processes take part in it.
#ifndef CMIF_RECORD_START_H
#define CMIF_RECORD_START_H

#include "recording.h"
#include "stand_in.h"

#include <memory>
#include <optional>
#include <sys/types.h>

namespace cmif_record
{

struct RecordingOptions {
    bool with_secrets = false;
    // The same run gives the same bytes: the stand-ins follow from this number, processes are
    // numbered in the order in which they appear, and the recording is said to have started at the
    // beginning of 1970. For a simulation that sets the time.
    std::optional<unsigned> repeatable = std::nullopt;
};

// What a process needs to take part.
struct RingPlace {
    int file;     // of the ring; closed when a program is run
    pid_t writer; // which has it under the same number
};

// Creates the file, for its owner alone, with its head line, and starts the writer. Fails with
// std::system_error, whose text names the file.
RingPlace start_recording(const std::string &file, const RecordingOptions &options);

// Records this process and those that it forks. Fails with std::system_error.
std::unique_ptr<Recording> open_recording(const RingPlace &place);

} // namespace cmif_record

#endif
