// The forms that AT requests come in, each one body over the round trip.
#ifndef CMIF_AT_REQUESTS_H
#define CMIF_AT_REQUESTS_H

#include "at_channel.h"

#include <cstddef>

namespace cmif
{

// No fields: the daemon's code is the whole answer.
AtReply ask(AtRequest &request);

// One or two texts, each traced.
struct TextsRequest {
    AtRequest request;
    AtSite first{};
    AtSite second{};
};
int send_text(TextsRequest &self, const char *text);
int send_texts(TextsRequest &self, const char *first, const char *second);

// A number that picks the text of the value. A number outside the table is sent all the same, with
// an empty value.
struct Choice {
    int argument;
    char text[4];
};
const char *chosen(int argument, const Choice *choices, std::size_t rows);

struct ValueRequest {
    AtRequest request;
    AtSite mode{};
    AtSite value{};
};
enum class Echo { no, yes }; // whether the number itself is traced first
int send_value(ValueRequest &self, Echo echo, int argument, const char *text);

// No fields; the answer is what the daemon has stored under a key.
struct QueryRequest {
    AtRequest request;
    const char *key;
    AtSite site{};
};
int query(QueryRequest &self, char *out);

} // namespace cmif

#endif
