#include "at_daemon.h"

#include "at_record.h"
#include "daemons/publish/provider_file.h"

#include <cstring>

namespace sim
{
namespace
{

using namespace std::chrono_literals;

constexpr auto search_time = 5s;

static_assert(offsetof(cmif_msg, ret_code) - offsetof(cmif_msg, set_string) + sizeof(int) ==
              CMIF_AT_PAYLOAD);

} // namespace

AtDaemon::AtDaemon(Modem &modem, Pace pace, bool verbose)
    : modem_(modem), pace_(pace), log_("AT", verbose)
{
}

AtDaemon::~AtDaemon()
{
    stop_.raise();
    thread_.reset();
    if (search_.joinable())
        search_.join();
}

// Replies whose callers are gone would pass for answers to the next ones.
bool AtDaemon::start()
{
    if (!requests_.prepare() || !replies_.prepare())
        return false;
    replies_.clear();
    thread_.emplace(requests_, stop_,
                    [this](const char *bytes, std::size_t payload) { serve(bytes, payload); });
    return true;
}

void AtDaemon::serve(const char *bytes, std::size_t payload)
{
    cmif_msg record{};
    std::memcpy(&record.mod_id, bytes, sizeof record.mod_id);
    const AtRequest *request = find_at_request(record.mod_id);
    if (!request) {
        log_.request(record.mod_id, unknown_request, "");
        return reply(record.mod_id, unknown_request, ret_not_supported);
    }
    if (payload == CMIF_AT_PAYLOAD) {
        std::memcpy(record.set_string, bytes + sizeof record.mod_id, payload);
        return serve(*request, record);
    }
    log_.request(request->code, request->name, "(malformed: wrong size)");
    if (request->answer != AtAnswer::never)
        reply(request->code, request->name, ret_incorrect_parameters);
}

// A field without an end gives nothing of the record to the log: parts of a secret may have run
// into its neighbours.
void AtDaemon::serve(const AtRequest &request, const cmif_msg &record)
{
    const std::optional<AtArguments> arguments = decode(request, record);
    log_.request(request.code, request.name,
                 arguments ? describe(request, *arguments)
                           : "(malformed: a field without its end)");
    if (request.answer == AtAnswer::never)
        return;
    if (request.answer == AtAnswer::after_search)
        return join_search(request);
    const RetCode code = modem_.change([&](ModemState &state) {
        if (!arguments)
            return ret_incorrect_parameters;
        const RetCode refusal = state.refusal(request.needs);
        return refusal == ret_ok ? request.handle(state, *arguments) : refusal;
    });
    reply(request.code, request.name, code);
}

// The text part stays zero: what came in, a PIN perhaps, doesn't go back into a queue. The line
// comes first, before what the caller does next.
void AtDaemon::reply(long code, const char *name, int ret_code)
{
    cmif_msg record{};
    record.mod_id = code;
    record.ret_code = ret_code;
    log_.reply(code, name, ret_code);
    replies_.send(&record, CMIF_AT_PAYLOAD, stop_);
}

// Other requests are served while a search runs. A second caller gets the result of the same one.
void AtDaemon::join_search(const AtRequest &request)
{
    bool first = false;
    const RetCode refusal = modem_.change([&](ModemState &state) {
        const RetCode code = state.refusal(request.needs);
        if (code != ret_ok)
            return code;
        first = searchers_++ == 0;
        state.search_result = ret_search_running;
        return ret_ok;
    });
    if (refusal != ret_ok)
        return reply(request.code, request.name, refusal);
    if (!first)
        return;
    if (search_.joinable())
        search_.join(); // the one before, which has its result already
    search_ = std::thread([this, &request] { search(request); });
}

// The SIM or the radio may have gone meanwhile: then there is nothing to list.
void AtDaemon::search(const AtRequest &request)
{
    if (stop_.wait_for(pace_.of(search_time)))
        return;
    int callers = 0;
    const RetCode code = modem_.change([&](ModemState &state) {
        callers = std::exchange(searchers_, 0);
        state.search_result = state.refusal(request.needs);
        if (state.search_result == ret_ok && !write_provider_file(state.network.provider_list()))
            state.search_result = ret_file_not_written;
        return state.search_result;
    });
    for (; callers > 0; --callers)
        reply(request.code, request.name, code);
}

} // namespace sim
