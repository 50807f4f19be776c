#include "at_requests.h"

#include "store.h"

namespace cmif
{

int send_request(const AtRequest &request, AtSites &sites, bool *answered)
{
    return cmif_round_trip(
        request, sites, [](AtMessage &message) { message.trace_type(); }, answered);
}

int query(const AtRequest &request, AtSites &sites, FunctionRef<void()> read_answer)
{
    bool answered = false;
    const int result = send_request(request, sites, &answered);
    if (answered)
        read_answer();
    return result;
}

int query_text(const AtRequest &request, AtSites &sites, const char *key, char *out)
{
    if (!out)
        return CMIF_INVALID;
    return query(request, sites, [&] {
        std::strcpy(out, tarnNvramConfig_get(key));
        sites.first.print("Get nvram %s ='%s'\n", key, out);
    });
}

int send_text(const AtRequest &request, AtSites &sites, const char *text)
{
    return cmif_round_trip(request, sites, [&](AtMessage &message) {
        message.trace_type();
        message.set_text(message.record.set_string, text);
        sites.first.print("set_string=%s\n", message.record.set_string);
    });
}

int send_texts(const AtRequest &request, AtSites &sites, const char *first, const char *second)
{
    return cmif_round_trip(request, sites, [&](AtMessage &message) {
        message.trace_type();
        message.set_text(message.record.set_string, first);
        message.set_text(message.record.set_string2, second);
        sites.first.print("set_string=%s\n", message.record.set_string);
        sites.second.print("set_string2=%s\n", message.record.set_string2);
    });
}

int send_value(const AtRequest &request, AtSites &sites, Echo echo, int argument, const char *text)
{
    return cmif_round_trip(request, sites, [&](AtMessage &message) {
        if (echo == Echo::yes)
            sites.first.print("set_mode=%d\n", argument);
        message.trace_type();
        message.set_text(message.record.set_value, text);
        sites.second.print("set_value=%s\n", message.record.set_value);
    });
}

} // namespace cmif
