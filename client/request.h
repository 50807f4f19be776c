// A request to a daemon, by the function of the library that sends it.
#ifndef CLIENT_REQUEST_H
#define CLIENT_REQUEST_H

#include "channel.h"

namespace client
{

struct Request {
    const char *name = "";   // of the library's function
    RequestCode code{};      // no channel: nothing is sent
    bool is_answered = true; // false: the function sends and returns

    Channel channel() const { return code.channel; }
};

constexpr Request at_request(const char *name, cmif_at_code code)
{
    return {name, {Channel::at, code}, code != CMIF_AT_DOWNLOAD_MODE};
}

constexpr Request qmi_request(const char *name, cmif_qmi_code code)
{
    return {name, {Channel::qmi, code}, code != CMIF_QMI_DOWNLOAD_MODE};
}

// For a call that sends nothing to a daemon.
constexpr Request no_request(const char *name)
{
    return {.name = name};
}

} // namespace client

#endif
