#include "caller.h"

#include "client/call.h"
#include "cmif/cmif.h"

#include <cstdio>
#include <cstring>
#include <sys/ipc.h>
#include <sys/msg.h>

namespace soak
{
namespace
{

using client::Json;

Outcome outcome_of(const Json &details)
{
    if (details.value("withdrawn", false))
        return Outcome::withdrawn;
    return details.value("sent", false) ? Outcome::picked_up : Outcome::not_sent;
}

Outcome call(const client::Request &name, const Request &request, double seconds,
             const client::Body &body)
{
    try {
        const client::Call call{.request = name, .body = body, .timeout = seconds};
        return client::call({}, call).result == request.number ? Outcome::answered
                                                               : Outcome::foreign_answer;
    } catch (const client::Failure &failure) {
        if (failure.status() == client::Exit::no_answer)
            return outcome_of(failure.details());
        std::fprintf(stderr, "%s\n", failure.what());
        return Outcome::failed;
    }
}

// The library's calls don't return what the daemon answers to a request with a text.
int exchange(const std::string &text)
{
    qmi_msg record{};
    record.mtype = CMIF_QMI_MODIFY_PROFILE;
    text.copy(record.payload, sizeof record.payload - 1);
    const int requests = msgget(CMIF_QMI_REQUEST_KEY, 0);
    const int replies = msgget(CMIF_QMI_REPLY_KEY, 0);
    if (msgsnd(requests, &record, CMIF_QMI_PAYLOAD, 0) != 0 ||
        msgrcv(replies, &record, CMIF_QMI_PAYLOAD, CMIF_QMI_MODIFY_PROFILE, 0) == -1)
        return -1;
    int number = 0;
    std::memcpy(&number, record.payload, sizeof number);
    return number;
}

std::string output_of(const std::string &command)
{
    std::string output;
    std::FILE *pipe = popen(command.c_str(), "r");
    for (int c = 0; (c = std::fgetc(pipe)) != EOF;)
        output += static_cast<char>(c);
    pclose(pipe);
    return output;
}

} // namespace

Outcome call_at(const Request &request, double seconds)
{
    return call(client::at_request("enter PIN", CMIF_AT_ENTER_PIN), request, seconds,
                [&](Json &) { return shared_CMIF_set_EntermobilePIN(request.text().c_str()); });
}

Outcome call_qmi(const Request &request, double seconds)
{
    return call(client::qmi_request("modify profile", CMIF_QMI_MODIFY_PROFILE), request, seconds,
                [&](Json &) { return exchange(request.text()); });
}

// The number is none of the library's own results, so the tool reports it as the daemon's error.
Outcome run_tool(const Request &request, double seconds)
{
    const std::string output = output_of("cmifctl --json --timeout " + std::to_string(seconds) +
                                         " data at-profile 3 IP '" + request.text() + "'");
    const Json error = Json::parse(output, nullptr, false).value("error", Json::object());
    if (const auto daemon = error.find("daemon"); daemon != error.end())
        return (*daemon)["code"] == request.number ? Outcome::answered : Outcome::foreign_answer;
    if (error.value("name", "") == name_of(client::Exit::no_answer))
        return outcome_of(error);
    std::fprintf(stderr, "%s\n", output.c_str());
    return Outcome::failed;
}

} // namespace soak
