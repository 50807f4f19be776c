#include "messages.h"

#include "cli/numbers.h"
#include "cmif/cmif.h"
#include "cmifctl/output/times.h"
#include "settings.h"
#include "store.h"

#include <sys/mman.h>

namespace cmifctl
{
namespace
{

// The library writes as many records as the store counts, without a bound. A page that can't be
// written follows the room for them, so that a wild count kills the child and does no other harm.
// There is room for more than a store holds; memory is used for what is written.
constexpr std::size_t max_messages = 65536;
constexpr std::size_t page = 65536;

cmif_sms_info *guarded_room()
{
    const std::size_t size = max_messages * sizeof(cmif_sms_info);
    const std::size_t rounded = (size + page - 1) / page * page;
    void *memory = mmap(nullptr, rounded + page, PROT_READ | PROT_WRITE,
                        MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (memory == MAP_FAILED)
        throw Failure(Exit::other, "no memory for the messages", "Close some programs.");
    auto *end = static_cast<char *>(memory) + rounded;
    mprotect(end, page, PROT_NONE);
    return reinterpret_cast<cmif_sms_info *>(end - size);
}

Json message(const cmif_sms_info &info)
{
    return {{"id", info.id},
            {"unread", info.stat == 0},
            {"from", text_or_null(info.da)},
            {"time", text_or_null(iso_time(info.scts).value_or(""))},
            {"scts", text_or_null(info.scts)},
            {"text", info.text}};
}

int fill_messages(Json &output)
{
    cmif_sms_info *list = guarded_room();
    int count = 0;
    int unread = 0;
    const int result = shared_CMIF_get_mobileSMSInfo(list, &count, &unread);
    output = {{"unread", unread}, {"messages", Json::array()}};
    for (int i = 0; i < count; ++i)
        output["messages"].push_back(message(list[i]));
    return result;
}

// Why the call crashed, if the count that it went by shows it.
void check_count(const Context &context)
{
    const std::string count = setting(context, "lte_mobile_sms_counts");
    if (cli::whole_number(count).value_or(0) > static_cast<long long>(max_messages))
        throw Failure(Exit::other,
                      "the daemon counts " + count + " messages, more than a store can hold",
                      "Restart the daemon: it counts them again.");
}

} // namespace

Json read_messages(const Context &context)
try {
    return at_reading(
        context, {.request = at_request("shared_CMIF_get_mobileSMSInfo", CMIF_AT_LIST_MESSAGES),
                  .body = fill_messages});
} catch (const Failure &failure) {
    if (failure.status() == Exit::other)
        check_count(context);
    throw;
}

} // namespace cmifctl
