// What a recorded process did: a record that passed a queue, or a value for the store.
#ifndef CMIF_RECORD_ENTRY_H
#define CMIF_RECORD_ENTRY_H

#include <cstdint>
#include <string_view>

namespace cmif_record
{

enum class Channel { at, qmi };
enum class Direction { request, reply };

struct Queue {
    Channel channel;
    Direction direction;
};

struct Record {
    long code;
    std::string_view payload;
};

// Whether the process took the record from a queue or put it there.
enum class Action { received, sent };

// Two texts belong to it: a name (of a setting, or a file) and a text (its value or contents, the
// payload of a record, the path of a process's program).
struct Entry {
    enum class Kind { process, record, setting, file, failed };

    Kind kind = Kind::failed;
    Queue queue{};   // of a record
    Action action{}; // of a record
    long code = 0;   // of a record
    int process = 0, thread = 0;
    long long time = 0; // in nanoseconds since the start
};

} // namespace cmif_record

#endif
