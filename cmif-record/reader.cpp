#include "reader.h"

#include "cmif/cmif.h"
#include "format.h"

#include <cerrno>
#include <cmath>
#include <cstring>
#include <fstream>
#include <nlohmann/json.hpp>

namespace cmif_record
{
namespace
{

using Json = nlohmann::json;

// The kernel's limit for a message, usually.
constexpr long long max_payload = 8192;

[[noreturn]] void fail(const std::string &what)
{
    throw RecordingError(what);
}

std::string bytes_of(const std::string &hex)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string bytes;
    for (std::size_t i = 0; i < hex.size(); i += 2) {
        const std::size_t high = digits.find(hex[i]);
        const std::size_t low = i + 1 < hex.size() ? digits.find(hex[i + 1]) : std::string::npos;
        if (high == std::string::npos || low == std::string::npos)
            fail("'" + hex + "' is not a number of bytes in hex");
        bytes += static_cast<char>(high << 4 | low);
    }
    return bytes;
}

const Json &member(const Json &object, const char *name)
{
    const auto found = object.find(name);
    if (found == object.end())
        fail("no member '" + std::string(name) + "'");
    return *found;
}

std::string text(const Json &object, const char *name)
{
    const Json &value = member(object, name);
    if (value.is_string())
        return value.get<std::string>();
    if (value.is_object() && value.contains("hex") && value["hex"].is_string())
        return bytes_of(value["hex"].get<std::string>());
    fail("'" + std::string(name) + "' is not a text");
}

long long whole_number(const Json &object, const char *name, long long min, long long max)
{
    const Json &value = member(object, name);
    const long long number = value.is_number_integer() ? value.get<long long>() : min - 1;
    if (number < min || number > max)
        fail("'" + std::string(name) + "' is not a whole number from " + std::to_string(min) +
             " to " + std::to_string(max));
    return number;
}

std::string choice(const Json &object, const char *name, const std::vector<std::string> &allowed)
{
    std::string value = text(object, name);
    std::string list;
    for (const std::string &each : allowed) {
        if (each == value)
            return value;
        list.append(list.empty() ? "" : ", ").append(each);
    }
    fail("'" + std::string(name) + "' is '" + value + "', not one of: " + list);
}

long long microseconds(const Json &line)
{
    constexpr double second = 1e6, max_seconds = 1e9;
    const Json &time = member(line, "time");
    if (!time.is_number() || !(time.get<double>() >= 0 && time.get<double>() <= max_seconds))
        fail("'time' is not a number of seconds");
    return std::llround(time.get<double>() * second);
}

std::string number_bytes(int number)
{
    std::string bytes(sizeof number, '\0');
    std::memcpy(bytes.data(), &number, sizeof number);
    return bytes;
}

int number_in(const Json &fields, const char *name)
{
    constexpr long long max = 0x7FFFFFFF;
    return static_cast<int>(whole_number(fields, name, -max - 1, max));
}

// The fields tell all of a record without "payload".
std::string reply_payload(const Json &line, Channel channel)
{
    const auto size = static_cast<std::size_t>(whole_number(line, "size", 0, max_payload));
    const Json &fields = member(line, "fields");
    std::string payload;
    if (line.contains("payload"))
        payload = bytes_of(text(line, "payload"));
    else if (channel == Channel::at)
        payload = std::string(CMIF_AT_PAYLOAD - sizeof(int), '\0') +
                  number_bytes(number_in(fields, "ret_code"));
    else if (fields.contains("text"))
        payload = text(fields, "text");
    else if (size > 0)
        payload = number_bytes(number_in(fields, fields.contains("status") ? "status" : "number"));
    if (payload.size() > size)
        fail("'size' is smaller than the record");
    payload.resize(size);
    return payload;
}

std::map<std::string, std::string> request_fields(const Json &line)
{
    std::map<std::string, std::string> fields;
    const Json &members = member(line, "fields");
    if (!members.is_object())
        fail("'fields' is not an object");
    for (const auto &[name, value] : members.items())
        fields[name] = value.dump();
    if (line.contains("payload"))
        fields["payload"] = member(line, "payload").dump();
    return fields;
}

// Returns nothing for the callers' own sends and receives.
std::optional<Event> record_event(const Json &line, bool is_request)
{
    Event event{is_request ? Event::Type::request : Event::Type::reply};
    event.time = microseconds(line);
    event.channel = choice(line, "channel", {"at", "qmi"}) == "at" ? Channel::at : Channel::qmi;
    event.code = static_cast<long>(whole_number(line, "code", -0x7FFFFFFF, 0x7FFFFFFF));
    const bool received = choice(line, "action", {"received", "sent"}) == "received";
    if (received != is_request)
        return std::nullopt;
    if (is_request)
        event.fields = request_fields(line);
    else
        event.payload = reply_payload(line, event.channel);
    return event;
}

std::optional<Event> event_of(const Json &line, const std::string &type)
{
    if (type == "request" || type == "reply")
        return record_event(line, type == "request");
    if (type != "set" && type != "file")
        return std::nullopt;
    Event event{type == "set" ? Event::Type::setting : Event::Type::file};
    event.time = microseconds(line);
    event.name = text(line, type == "set" ? "key" : "path");
    event.value = text(line, type == "set" ? "value" : "text");
    if (type == "file" && event.name != CMIF_PROVIDER_LIST_FILE)
        fail("'path' is '" + event.name + "', not " CMIF_PROVIDER_LIST_FILE);
    return event;
}

bool read_head(const Json &line)
{
    if (text(line, "format") != format_name)
        fail("not a recording of cmif-record");
    if (const Json &version = member(line, "version"); version != format_version)
        fail("format version " + version.dump() + "; this program reads version " +
             std::to_string(format_version));
    return choice(line, "secrets", {"replaced", "kept"}) == "replaced";
}

Json object_of(const std::string &line)
try {
    Json value = Json::parse(line);
    if (!value.is_object())
        fail("not a JSON object");
    return value;
} catch (const Json::parse_error &error) {
    fail("not valid JSON at column " + std::to_string(error.byte));
} catch (const Json::out_of_range &) {
    fail("not valid JSON: a number is too large");
}

// The next line, without its end; false after the last one. A file that never ends a line is no
// recording either.
bool read_line(std::istream &stream, std::string &line)
{
    constexpr std::size_t max_line = std::size_t{1024} * 1024;
    line.clear();
    for (int byte = stream.get(); byte != EOF; byte = stream.get()) {
        if (byte == '\n')
            return true;
        if (line.size() == max_line)
            fail("longer than 1 MiB");
        line += static_cast<char>(byte);
    }
    return !line.empty();
}

class Reader
{
public:
    void take(const std::string &line)
    {
        const Json object = object_of(line);
        if (is_first_) {
            contents_.secrets_replaced = read_head(object);
            is_first_ = false;
            return;
        }
        const std::string type = choice(
            object, "type", {"process", "request", "reply", "set", "file", "failed", "lost"});
        const long long thread = whole_number(object, "thread", 0, 0x7FFFFFFF);
        if (type == "failed")
            return take_back(thread);
        if (type == "lost")
            return;
        std::optional<Event> event = event_of(object, type);
        last_[thread] = event ? contents_.events.size() : none;
        if (event)
            contents_.events.push_back(*std::move(event));
    }
    bool is_empty() const { return is_first_; }
    RecordingContents contents() &&
    {
        for (std::size_t index = void_.size(); index > 0; --index)
            contents_.events.erase(contents_.events.begin() +
                                   static_cast<std::ptrdiff_t>(void_[index - 1]));
        return std::move(contents_);
    }

private:
    static constexpr std::size_t none = ~std::size_t{0};

    // What this thread did last did not happen.
    void take_back(long long thread)
    {
        const auto last = last_.find(thread);
        if (last == last_.end() || last->second == none)
            return;
        void_.insert(std::lower_bound(void_.begin(), void_.end(), last->second), last->second);
        last->second = none;
    }

    bool is_first_ = true;
    RecordingContents contents_;
    std::map<long long, std::size_t> last_; // each thread's last event
    std::vector<std::size_t> void_;         // in their order
};

} // namespace

RecordingContents read_recording(const std::string &file)
{
    std::ifstream stream(file);
    if (!stream)
        fail(file + ": " + std::strerror(errno));
    Reader reader;
    long long number = 0;
    for (std::string line;;) {
        ++number;
        try {
            if (!read_line(stream, line))
                break;
            reader.take(line);
        } catch (const RecordingError &error) {
            fail(file + ":" + std::to_string(number) + ": " + error.what());
        }
    }
    if (stream.bad())
        fail(file + ": " + std::strerror(errno));
    if (reader.is_empty())
        fail(file + ": empty");
    return std::move(reader).contents();
}

Event request_event(Channel channel, const Record &record)
{
    JsonLine line;
    add_record(line, {channel, Direction::request}, record, std::nullopt);
    Event event{Event::Type::request};
    event.channel = channel;
    event.code = record.code;
    event.fields = request_fields(Json::parse(line.finish()));
    return event;
}

} // namespace cmif_record
