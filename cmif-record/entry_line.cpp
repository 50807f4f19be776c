#include "entry_line.h"

#include "record_members.h"
#include "secret_keys.h"

namespace cmif_record
{

int EntryLines::shown(int number)
{
    if (!renumber_)
        return number;
    return numbers_.try_emplace(number, static_cast<int>(numbers_.size()) + 1).first->second;
}

JsonLine EntryLines::start(const char *type, long long time, int process, int thread)
{
    JsonLine line;
    line.add_seconds("time", time);
    line.add("process", shown(process));
    line.add("thread", shown(thread));
    line.add("type", type);
    return line;
}

JsonLine EntryLines::setting(const Ring::Item &item)
{
    const Entry &entry = item.entry;
    const bool hide = key_ && is_secret(item.name, item.text);
    JsonLine line = start("set", entry.time, entry.process, entry.thread);
    line.add("key", item.name);
    line.add("value", hide ? stand_in(*key_, item.text) : item.text);
    return line;
}

JsonLine EntryLines::record(const Ring::Item &item)
{
    const Entry &entry = item.entry;
    const bool is_request = entry.queue.direction == Direction::request;
    JsonLine line =
        start(is_request ? "request" : "reply", entry.time, entry.process, entry.thread);
    line.add("channel", entry.queue.channel == Channel::at ? "at" : "qmi");
    line.add("action", entry.action == Action::received ? "received" : "sent");
    add_record(line, entry.queue, {entry.code, item.text}, key_);
    return line;
}

std::string EntryLines::line_of(const Ring::Item &item)
{
    const Entry &entry = item.entry;
    if (entry.kind == Entry::Kind::setting)
        return setting(item).finish();
    if (entry.kind == Entry::Kind::record)
        return record(item).finish();
    const bool process = entry.kind == Entry::Kind::process, file = entry.kind == Entry::Kind::file;
    JsonLine line = start(process ? "process"
                          : file  ? "file"
                                  : "failed",
                          entry.time, entry.process, entry.thread);
    if (process)
        line.add("program", item.text);
    if (file) {
        line.add("path", item.name);
        line.add("text", item.text);
    }
    return line.finish();
}

std::string EntryLines::lost_line(long long time, int process, unsigned count)
{
    JsonLine line = start("lost", time, process, process);
    line.add("count", count);
    return line.finish();
}

} // namespace cmif_record
