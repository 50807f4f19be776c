#include "client/result.h"
#include "cmif/cmif.h"
#include "cmifctl/calls.h"
#include "cmifctl/input/questions.h"
#include "cmifctl/output/times.h"
#include "daemons/cme_error.h"
#include "messages.h"
#include "verbs.h"

#include <limits>

namespace cmifctl
{
namespace
{

// For people; the time stamp as it is when it can't be parsed.
Json readable_time(const Json &message)
{
    if (message["time"].is_null())
        return message["scts"];
    return short_time(message["scts"].get_ref<const std::string &>());
}

[[noreturn]] void fail_no_message(int id, const Json &details = Json::object())
{
    throw Failure(Exit::invalid, "there is no message " + std::to_string(id),
                  "'cmifctl sms list' shows the indexes.", details);
}

Call removal(int index, int flag)
{
    return {.request = at_request("shared_CMIF_set_DeletemobileSMS", CMIF_AT_DELETE_MESSAGES),
            .body = [index, flag](Json &) { return shared_CMIF_set_DeletemobileSMS(index, flag); }};
}

int message_id(const Context &context)
{
    return static_cast<int>(
        context.arguments.number("id", "ID", 0, std::numeric_limits<int>::max()));
}

} // namespace

void sms_list(Context &context)
{
    const Json found = read_messages(context);
    Json rows = found["messages"];
    context.report.data("unread", found["unread"]);
    Table table{"messages",
                {{"id", "ID"},
                 {"state", "STATE"},
                 {"from", "FROM"},
                 {"shown_time", "TIME"},
                 {"text", "TEXT"}},
                std::move(rows)};
    for (Json &row : table.rows)
        table.shown.push_back({{"state", row["unread"] == true ? "unread" : "read"},
                               {"shown_time", readable_time(row)}});
    context.report.table(std::move(table));
}

void sms_show(Context &context)
{
    const int id = message_id(context);
    const Json found = read_messages(context);
    for (const Json &row : found["messages"]) {
        if (row["id"] != id)
            continue;
        for (const auto &[key, value] : row.items())
            context.report.field("message", {key, value});
        return;
    }
    fail_no_message(id);
}

void sms_delete(Context &context)
{
    constexpr int one = 0;
    constexpr int all = 4;
    if (context.arguments.has("all") && context.arguments.has("id"))
        throw Failure(Exit::usage, "an ID and --all exclude each other", "Give one of them.");
    if (!context.arguments.has("all") && !context.arguments.has("id"))
        throw Failure(Exit::usage, "no message given", "Give its ID, or --all.");
    if (context.arguments.has("all")) {
        confirm(context, "This deletes all messages");
        at_call(context, removal(0, all));
        return context.report.result("deleted", "All messages were deleted.");
    }
    const int id = message_id(context);
    const int result = at_call_raw(context, removal(id, one)).result;
    if (result == static_cast<int>(daemons::CmeError::invalid_index))
        fail_no_message(id, {{"daemon", client::daemon_error(result)}});
    client::check_at("shared_CMIF_set_DeletemobileSMS", result, true);
    context.report.result("deleted", "Message " + std::to_string(id) + " was deleted.");
}

} // namespace cmifctl
