// A recording: what this process and others do, for the writer. It costs them little, since the
// writer decodes and writes it later.
#ifndef CMIF_RECORD_RECORDING_H
#define CMIF_RECORD_RECORDING_H

#include "ring.h"

namespace cmif_record
{

// Nothing here fails, changes errno or is a point where a thread can be cancelled.
class Recording
{
public:
    explicit Recording(Ring *ring) : ring_(ring) {} // takes it over
    ~Recording();                                   // when all is written
    Recording(const Recording &) = delete;
    Recording &operator=(const Recording &) = delete;

    void add_process();
    void add(Queue queue, Action action, const Record &record);
    void add_setting(std::string_view key, std::string_view value);
    // The entry before, of this thread, did not happen after all.
    void add_failure();

    // Waits until all that any process did so far is in the file.
    void flush() const;
    // Of a simulation: the time of all that follows, since the start.
    void set_time(long long nanoseconds) { ring_->set_time(nanoseconds); }

private:
    void append(Entry entry, std::string_view name = "", std::string_view text = "");
    void add_provider_list();

    Ring *ring_;
};

} // namespace cmif_record

#endif
