// AT requests: short messages. Anyone may send one, so their text is never a format.
#include "at_requests.h"
#include "store.h"

#include <cstddef>
#include <cstdio>

static_assert(offsetof(cmif_sms_info, stat) == 4 && offsetof(cmif_sms_info, da) == 5);
static_assert(offsetof(cmif_sms_info, scts) == 25 && offsetof(cmif_sms_info, text) == 75);
static_assert(sizeof(cmif_sms_info) == 1100);

namespace cmif
{
namespace
{

// "lte_mobile_sms_id_1" and the like.
class MessageKey
{
public:
    MessageKey(const char *field, int number)
    {
        std::snprintf(text_, sizeof text_, "lte_mobile_sms_%s_%d", field, number);
    }
    const char *stored() const { return tarnNvramConfig_get(text_); }

private:
    char text_[50];
};

// Copies a stored text, cut to the field. "%%" is how the daemon stores a percent sign; all other
// characters are copied as they are.
template <std::size_t size>
void copy_message_text(char (&out)[size], const char *text)
{
    char *to = out;
    for (; *text && to != out + size - 1; ++text) {
        *to++ = *text;
        if (text[0] == '%' && text[1] == '%')
            ++text;
    }
    *to = '\0';
}

void read_message(cmif_sms_info &message, int number)
{
    message.id = std::atoi(MessageKey("id", number).stored());
    message.stat = std::strcmp(MessageKey("stat", number).stored(), "REC UNREAD") != 0;
    copy_message_text(message.da, MessageKey("da", number).stored());
    copy_message_text(message.scts, MessageKey("scts", number).stored());
    copy_message_text(message.text, MessageKey("text", number).stored());
}

} // namespace
} // namespace cmif

using namespace cmif;

int shared_CMIF_get_mobileSMSInfo(cmif_sms_info *messages, int *count, int *unreads)
{
    static constexpr AtRequest request{"shared_CMIF_get_mobileSMSInfo", CMIF_AT_LIST_MESSAGES};
    static constinit AtSites sites;
    if (!count || !unreads)
        return CMIF_INVALID;
    return query(request, sites, [&] {
        *count = std::atoi(tarnNvramConfig_get("lte_mobile_sms_counts"));
        *unreads = std::atoi(tarnNvramConfig_get("lte_mobile_sms_unreads"));
        // The count is read through the caller's pointer on each turn: it may change meanwhile.
        for (int index = 0; messages && index < *count; ++index)
            read_message(messages[index], index + 1);
    });
}

int shared_CMIF_set_DeletemobileSMS(int index, int index2)
{
    static constexpr AtRequest request{"shared_CMIF_set_DeletemobileSMS", CMIF_AT_DELETE_MESSAGES};
    static constinit AtSites sites;
    return cmif_round_trip(request, sites, [&](AtMessage &message) {
        cmif_msg &record = message.record;
        message.trace_type();
        std::snprintf(record.set_string, sizeof record.set_string, "%d", index);
        std::snprintf(record.set_string2, sizeof record.set_string2, "%d", index2);
        sites.first.print("set_string=%s\n", record.set_string);
        sites.second.print("set_string2=%s\n", record.set_string2);
    });
}
