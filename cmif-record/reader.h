// A recording that is read: what a daemon was asked and answered, and what it set.
#ifndef CMIF_RECORD_READER_H
#define CMIF_RECORD_READER_H

#include "record_members.h"

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace cmif_record
{

struct Event {
    enum class Type { request, reply, setting, file };

    Type type;
    long long time = 0; // in microseconds
    Channel channel = Channel::at;
    long code = 0;
    std::string payload{};                       // of a reply
    std::map<std::string, std::string> fields{}; // of a request, as JSON; "payload" among them
    std::string name{}, value{};                 // of a setting or a file
};

struct RecordingContents {
    bool secrets_replaced = false;
    std::vector<Event> events{}; // in their order; what callers sent and received is left out
};

// "FILE: what is wrong", or "FILE:LINE: ..."
struct RecordingError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Fails with RecordingError.
RecordingContents read_recording(const std::string &file);

// A request as a recording that keeps secrets holds it.
Event request_event(Channel channel, const Record &record);

} // namespace cmif_record

#endif
