// The AT channel: one record to the daemon, one back, told apart by request code alone.
#ifndef CMIF_AT_CHANNEL_H
#define CMIF_AT_CHANNEL_H

#include "at_vocabulary.h"
#include "cmif.h"
#include "function_ref.h"
#include "trace.h"

namespace cmif
{

// An exported request: its name and code, its wording, and a trace site for each step. One static
// object in each exported function, so that no two requests share a site.
struct AtRequest {
    constexpr AtRequest(const char *its_name, int its_code,
                        const AtVocabulary &its_lines = common_lines)
        : name(its_name), lines(its_lines), code(its_code)
    {
    }

    const char *name;
    const AtVocabulary &lines;
    int code;

    struct Sites {
        AtSite no_request_queue, no_reply_queue, request_queue, reply_queue, type, not_sent, sent,
            not_received, received;
    } sites{};
};

// The record of one call: its type, and zeros.
class AtMessage
{
public:
    explicit AtMessage(AtRequest &request) : request_(request) { record.mod_id = request.code; }

    // Prints the line of the record's type.
    void announce();

    // Fills a text field. A longer text runs on into the fields behind it, as daemons and callers
    // know it, and is cut at the end of the text part: the result word is never reached.
    void put(char *field, const char *text);

    cmif_msg record{};

private:
    AtRequest &request_;
};

// What a request does between the look-up of its queues and the send: it prints its own lines and
// fills its fields, in order, and says whether there is anything to send.
enum class Then { send, stop };
using Preparation = FunctionRef<Then(AtMessage &)>;

// The daemon may itself answer with 2, 3 or -1: only `arrived` tells that it answered at all.
struct AtReply {
    int result;
    bool arrived;
};

AtReply cmif_round_trip(AtRequest &request, Preparation prepare);

// Sends a request without fields and waits for nobody; the reply queue isn't touched.
int cmif_send_only(AtRequest &request);

} // namespace cmif

#endif
