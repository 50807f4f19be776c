#include "client/result.h"
#include "cmif/cmif.h"
#include "cmifctl/output/terminal.h"
#include "cmifctl/output/text.h"
#include "verbs.h"

#include <limits>
#include <sys/mman.h>

namespace cmifctl
{

namespace
{

// The library writes as many records as the store counts, which nothing bounds: behind the room for
// them stands a page that may not be written, so that a wild count ends the child and nothing else.
constexpr std::size_t most_messages = 2048;
constexpr std::size_t page = 65536;

cmif_sms_info *guarded_room()
{
    const std::size_t size = most_messages * sizeof(cmif_sms_info);
    const std::size_t rounded = (size + page - 1) / page * page;
    void *memory =
        mmap(nullptr, rounded + page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        throw Failure(Exit::other, "no memory for the messages", "Close some programs.");
    auto *end = static_cast<char *>(memory) + rounded;
    mprotect(end, page, PROT_NONE);
    return reinterpret_cast<cmif_sms_info *>(end - size);
}

Json message(const cmif_sms_info &info)
{
    const auto time = iso_time(info.scts);
    return {{"id", info.id},     {"unread", info.stat == 0},
            {"from", info.da},   {"time", time ? Json(*time) : Json()},
            {"scts", info.scts}, {"text", info.text}};
}

int read_messages(Json &output)
{
    const cmif_sms_info *list = guarded_room();
    int count = 0;
    int unread = 0;
    const int result =
        shared_CMIF_get_mobileSMSInfo(const_cast<cmif_sms_info *>(list), &count, &unread);
    output = {{"unread", unread}, {"messages", Json::array()}};
    for (int i = 0; i < count; ++i)
        output["messages"].push_back(message(list[i]));
    return result;
}

Json messages(const Invocation &run)
{
    return ask_at(run, {.request = at_request("shared_CMIF_get_mobileSMSInfo", 18),
                        .body = read_messages,
                        .if_it_dies = "There is room for 2048 messages; 'cmifctl config get "
                                      "lte_mobile_sms_counts' shows how many are counted."});
}

// As people read it: a blank for the T, the stamp itself when it isn't understood.
std::string readable_time(const Json &message)
{
    if (message["time"].is_null())
        return message["scts"];
    std::string time = message["time"];
    time[time.find('T')] = ' ';
    return time;
}

[[noreturn]] void fail_no_message(int id, const Json &details = Json::object())
{
    throw Failure(Exit::invalid, "there is no message " + std::to_string(id),
                  "'cmifctl sms list' shows the indexes.", details);
}

Call removal(int index, int flag)
{
    return {.request = at_request("shared_CMIF_set_DeletemobileSMS", 19,
                                  {.first = std::to_string(index), .second = std::to_string(flag)}),
            .body = [index, flag](Json &) { return shared_CMIF_set_DeletemobileSMS(index, flag); }};
}

int message_id(const Invocation &run)
{
    return run.arguments.number("id", "ID", 0, std::numeric_limits<int>::max());
}

} // namespace

void sms_list(Invocation &run)
{
    const Json found = messages(run);
    Json rows = found["messages"];
    constexpr std::size_t minutes = std::string_view("2024-03-01 08:00").size();
    run.report.data("unread", found["unread"]);
    Table table{"messages",
                {{"id", "ID"},
                 {"state", "STATE"},
                 {"from", "FROM"},
                 {"shown_time", "TIME"},
                 {"text", "TEXT"}},
                std::move(rows)};
    for (Json &row : table.rows)
        table.shown.push_back({{"state", row["unread"] == true ? "unread" : "read"},
                               {"shown_time", readable_time(row).substr(0, minutes)}});
    run.report.table(std::move(table));
}

void sms_show(Invocation &run)
{
    const int id = message_id(run);
    const Json found = messages(run);
    for (const Json &row : found["messages"]) {
        if (row["id"] != id)
            continue;
        for (const auto &[key, value] : row.items())
            run.report.field("message", {key, value, "", key == "time" ? readable_time(row) : ""});
        return;
    }
    fail_no_message(id);
}

void sms_delete(Invocation &run)
{
    constexpr int one = 0;
    constexpr int all = 4;
    constexpr int invalid_index = 21;
    if (run.arguments.has("all") && run.arguments.has("id"))
        throw Failure(Exit::usage, "an ID and --all exclude each other", "Give one of them.");
    if (!run.arguments.has("all") && !run.arguments.has("id"))
        throw Failure(Exit::usage, "which message?", "Give its ID, or --all.");
    if (run.arguments.has("all")) {
        confirm(run, "This deletes all messages");
        ask_at(run, removal(0, all));
        run.report.field("sms", {"all_deleted", true});
        return;
    }
    const int id = message_id(run);
    const int result = try_at(run, removal(id, one)).result;
    if (result == invalid_index)
        fail_no_message(id, {{"daemon", {{"code", result}, {"name", refusal(result)->name}}}});
    check_at("shared_CMIF_set_DeletemobileSMS", result);
    run.report.field("sms", {"deleted_id", id});
}

} // namespace cmifctl
