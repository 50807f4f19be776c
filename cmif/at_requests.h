// The forms that AT requests come in, each one body over the round trip.
#ifndef CMIF_AT_REQUESTS_H
#define CMIF_AT_REQUESTS_H

#include "at_channel.h"

#include <cstddef>

namespace cmif
{

// No fields. `answered` as in cmif_round_trip.
int send_request(const AtRequest &request, AtSites &sites, bool *answered = nullptr);

// No fields; the answer is what the daemon has stored. `read_answer` reads it, whatever the
// daemon's code is, and doesn't run if no answer came.
int query(const AtRequest &request, AtSites &sites, FunctionRef<void()> read_answer);

// A query of one key.
int query_text(const AtRequest &request, AtSites &sites, const char *key, char *out);

// One or two texts, each traced.
int send_text(const AtRequest &request, AtSites &sites, const char *text);
int send_texts(const AtRequest &request, AtSites &sites, const char *first, const char *second);

// The text of the value field for a number. One that isn't listed has an empty text, and is still
// sent.
struct Choice {
    int argument;
    char text[4];
};

template <std::size_t rows>
const char *text_for(int argument, const Choice (&choices)[rows])
{
    for (const Choice &choice : choices)
        if (choice.argument == argument)
            return choice.text;
    return "";
}

// A value. With Echo::yes the number itself is traced first.
enum class Echo { no, yes };
int send_value(const AtRequest &request, AtSites &sites, Echo echo, int argument, const char *text);

} // namespace cmif

#endif
