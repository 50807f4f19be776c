#include "at_daemon.h"

#include "at_record.h"

#include <cstring>

namespace daemons
{

static_assert(offsetof(cmif_msg, ret_code) - offsetof(cmif_msg, set_string) + sizeof(int) ==
              CMIF_AT_PAYLOAD);

AtDaemon::AtDaemon(Modem &modem, Publisher &publisher, Link &link, StopFlag &stop, bool verbose)
    : front_{modem, publisher}, stop_(stop), log_("AT", verbose), link_(link),
      slow_lane_([this](const AtJob &job) { serve(job); })
{
}

AtDaemon::~AtDaemon()
{
    stop_.raise();
    front_.modem.stop();
}

bool AtDaemon::start()
{
    if (!link_.prepare())
        return false;
    fast_lane_.emplace(link_, stop_,
                       [this](const char *bytes, std::size_t payload) { receive(bytes, payload); });
    return true;
}

void AtDaemon::receive(const char *bytes, std::size_t payload)
{
    cmif_msg record{};
    std::memcpy(&record.mod_id, bytes, sizeof record.mod_id);
    const AtRequest *request = find_at_request(record.mod_id);
    if (!request) {
        log_.request(record.mod_id, unknown_request, "");
        return reply(record.mod_id, unknown_request, CmeError::not_supported);
    }
    if (payload == CMIF_AT_PAYLOAD) {
        std::memcpy(record.set_string, bytes + sizeof record.mod_id, payload);
        return dispatch(*request, record);
    }
    log_.request(request->code, request->name, "(malformed: wrong size)");
    if (request->verb)
        reply(request->code, request->name, CmeError::incorrect_parameters);
}

// With a field that has no NUL, nothing of the record goes to the log: parts of a secret may have
// run into its neighbours.
void AtDaemon::dispatch(const AtRequest &request, const cmif_msg &record)
{
    const std::optional<AtArguments> arguments = decode(request, record);
    log_.request(request.code, request.name,
                 arguments ? describe(request, *arguments)
                           : "(malformed: a field without its end)");
    if (!request.verb)
        return;
    if (!arguments)
        return reply(request.code, request.name, CmeError::incorrect_parameters);
    const AtJob job{&request, *arguments};
    if (request.lane == AtLane::slow)
        return queue(job);
    serve(job);
}

// A search counts as running from now on, so that the next request for its state finds it.
void AtDaemon::queue(const AtJob &job)
{
    const int searches = job.request->code == CMIF_AT_SEARCH;
    front_.searches += searches;
    if (slow_lane_.push(job))
        return;
    front_.searches -= searches;
    reply(job.request->code, job.request->name, CmeError::not_allowed);
}

// Callers that asked for a search while this one ran get its result as well.
void AtDaemon::serve(const AtJob &job)
{
    const auto work = link_.work();
    const AtRequest &request = *job.request;
    const CmeError error = request.verb(front_, job.arguments);
    front_.publisher.publish();
    if (stop_.raised() && error == CmeError::no_connection_to_phone)
        return;
    int callers = 1;
    if (request.code == CMIF_AT_SEARCH) {
        callers += slow_lane_.take_all(request);
        front_.searches -= callers;
    }
    for (; callers > 0; --callers)
        reply(request.code, request.name, error);
}

// The text part stays zero: what came in, a PIN perhaps, doesn't go back into a queue. The line
// comes first, before what the caller does next.
void AtDaemon::reply(long code, const char *name, CmeError error)
{
    cmif_msg record{};
    record.mod_id = code;
    record.ret_code = static_cast<int>(error);
    log_.reply(code, name, error);
    link_.send(&record, CMIF_AT_PAYLOAD, stop_);
}

} // namespace daemons
