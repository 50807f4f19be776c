#include "messages.h"

#include "cmif/cmif.h"
#include "cmifctl/output/times.h"

#include <sys/mman.h>

namespace cmifctl
{
namespace
{

// The library writes as many records as the store counts, without a bound. A page that can't be
// written follows the room for them, so that a wild count kills the child and does no other harm.
constexpr std::size_t max_messages = 2048;
constexpr std::size_t page = 65536;

cmif_sms_info *guarded_room()
{
    const std::size_t size = max_messages * sizeof(cmif_sms_info);
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

} // namespace

Json read_messages(const Context &context)
{
    return at_call(context,
                   {.request = at_request("shared_CMIF_get_mobileSMSInfo", CMIF_AT_LIST_MESSAGES),
                    .body = fill_messages,
                    .crash_hint = "There is room for 2048 messages; 'cmifctl config get "
                                  "lte_mobile_sms_counts' shows how many are counted."});
}

} // namespace cmifctl
