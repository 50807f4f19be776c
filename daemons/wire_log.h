// What goes over the wire, a line for each record, on standard error.
#ifndef DAEMONS_WIRE_LOG_H
#define DAEMONS_WIRE_LOG_H

#include <string_view>

namespace sim
{

inline constexpr const char *unknown_request = "unknown request";

// One channel's lines. Silent unless asked for. Any thread may write.
class WireLog
{
public:
    WireLog(const char *channel, bool enabled) : channel_(channel), enabled_(enabled) {}

    // `details` are decoded fields, without secrets.
    void request(long code, std::string_view name, std::string_view details) const;
    void reply(long code, std::string_view name, int ret_code) const;
    void reply(long code, std::string_view name, std::string_view answer) const;

private:
    const char *channel_;
    bool enabled_;
};

} // namespace sim

#endif
