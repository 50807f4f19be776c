// The records of a channel, a line for each, on standard error.
#ifndef DAEMONS_WIRE_LOG_H
#define DAEMONS_WIRE_LOG_H

#include "cme_error.h"

#include <string_view>

namespace daemons
{

inline constexpr const char *unknown_request = "unknown request";

// One channel's lines, none unless enabled. Any thread may write.
class WireLog
{
public:
    WireLog(const char *channel, bool enabled) : channel_(channel), enabled_(enabled) {}

    // `details` are decoded fields, without secrets.
    void request(long code, std::string_view name, std::string_view details) const;
    void reply(long code, std::string_view name, CmeError error) const;
    void reply(long code, std::string_view name, std::string_view answer) const;

private:
    const char *channel_;
    bool enabled_;
};

} // namespace daemons

#endif
