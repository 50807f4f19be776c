// The AT channel: one record to the daemon and one back, matched by request code alone.
#ifndef CMIF_AT_CHANNEL_H
#define CMIF_AT_CHANNEL_H

#include "at_vocabulary.h"
#include "cmif.h"
#include "function_ref.h"
#include "trace.h"

namespace cmif
{

// What is constant in an exported request: its name for the lines, its code, and its set of lines.
struct AtRequest {
    const char *name;
    cmif_at_code code;
    const AtVocabulary &lines = common_lines;
};

// The trace sites of one exported request: one for each step, and two for lines of its own. Static
// in the exported function, since no two requests share a site.
struct AtSites {
    AtSite no_request_queue, no_reply_queue, request_queue, reply_queue, type, not_sent, sent,
        not_received, received;
    AtSite first, second;
};

// The record of one call: the request's code as its type, and zeros.
class AtMessage
{
public:
    AtMessage(const AtRequest &request, AtSites &sites) : request_(request), sites_(sites)
    {
        record.mod_id = request.code;
    }

    // Prints the line of the record's type.
    void trace_type();

    // Fills a text field. A longer text overflows into the following fields; daemons and callers
    // rely on that. It is cut at the end of the text part: ret_code is never reached.
    void set_text(char *field, const char *text);

    // Nothing is to be sent: the call ends with 0.
    void skip() { skipped_ = true; }
    bool skipped() const { return skipped_; }

    cmif_msg record{};

private:
    const AtRequest &request_;
    AtSites &sites_;
    bool skipped_ = false;
};

// What a request does between the look-up of its queues and the send: it prints its own lines and
// fills its fields, in order.
using PrepareFn = FunctionRef<void(AtMessage &)>;

// The result of the request. The daemon may answer with 2, 3 or -1 too: `answered`, false
// beforehand, becomes true only when the result is the daemon's.
int cmif_round_trip(const AtRequest &request, AtSites &sites, PrepareFn prepare,
                    bool *answered = nullptr);

// Sends a request without fields and doesn't wait for a reply; the reply queue isn't touched.
int cmif_send_only(const AtRequest &request, AtSites &sites);

} // namespace cmif

#endif
