// An entry as a line of a recording.
#ifndef CMIF_RECORD_ENTRY_LINE_H
#define CMIF_RECORD_ENTRY_LINE_H

#include "json_line.h"
#include "ring.h"
#include "stand_in.h"

#include <map>
#include <optional>

namespace cmif_record
{

class EntryLines
{
public:
    // With a key, secrets are replaced. With `renumber`, processes and threads are numbered in
    // the order in which they appear, so that equal runs give equal lines.
    EntryLines(const std::optional<StandInKey> &key, bool renumber) : key_(key), renumber_(renumber)
    {
    }

    std::string line_of(const Ring::Item &item);
    std::string lost_line(long long time, int process, unsigned count);

private:
    JsonLine start(const char *type, long long time, int process, int thread);
    JsonLine setting(const Ring::Item &item);
    JsonLine record(const Ring::Item &item);
    int shown(int number);

    std::optional<StandInKey> key_;
    bool renumber_;
    std::map<int, int> numbers_; // a process has the number of its first thread
};

} // namespace cmif_record

#endif
