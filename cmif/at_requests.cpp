#include "at_requests.h"

#include "store.h"

namespace cmif
{

AtReply ask(AtRequest &request)
{
    return cmif_round_trip(request, [](AtMessage &message) {
        message.announce();
        return Then::send;
    });
}

int send_text(TextsRequest &self, const char *text)
{
    return cmif_round_trip(self.request,
                           [&](AtMessage &message) {
                               message.announce();
                               message.put(message.record.set_string, text);
                               self.first.print("set_string=%s\n", message.record.set_string);
                               return Then::send;
                           })
        .result;
}

int send_texts(TextsRequest &self, const char *first, const char *second)
{
    return cmif_round_trip(self.request,
                           [&](AtMessage &message) {
                               message.announce();
                               message.put(message.record.set_string, first);
                               message.put(message.record.set_string2, second);
                               self.first.print("set_string=%s\n", message.record.set_string);
                               self.second.print("set_string2=%s\n", message.record.set_string2);
                               return Then::send;
                           })
        .result;
}

const char *chosen(int argument, const Choice *choices, std::size_t rows)
{
    for (const Choice *choice = choices; choice != choices + rows; ++choice)
        if (choice->argument == argument)
            return choice->text;
    return "";
}

int send_value(ValueRequest &self, Echo echo, int argument, const char *text)
{
    return cmif_round_trip(self.request,
                           [&](AtMessage &message) {
                               if (echo == Echo::yes)
                                   self.mode.print("set_mode=%d\n", argument);
                               message.put(message.record.set_value, text);
                               message.announce();
                               self.value.print("set_value=%s\n", message.record.set_value);
                               return Then::send;
                           })
        .result;
}

int query(QueryRequest &self, char *out)
{
    if (!out)
        return CMIF_INVALID;
    const AtReply reply = ask(self.request);
    if (!reply.arrived)
        return reply.result;
    // Whatever the daemon's code says, the caller gets what it published last.
    std::strcpy(out, tarnNvramConfig_get(self.key));
    self.site.print("Get nvram %s ='%s'\n", self.key, out);
    return reply.result;
}

} // namespace cmif
