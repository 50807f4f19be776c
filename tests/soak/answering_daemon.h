// A daemon on the real queues whose answer tells whose request it answers.
//
// A request's text is "NUMBER BEFORE AFTER". The daemon answers with the number, `before`
// milliseconds after it has picked the request up, and looks at its queue again `after`
// milliseconds later.
#ifndef TESTS_SOAK_ANSWERING_DAEMON_H
#define TESTS_SOAK_ANSWERING_DAEMON_H

#include "client/channel.h"

#include <string>

namespace soak
{

struct Request {
    int number = 0;
    int before_ms = 0;
    int after_ms = 0;

    std::string text() const;
};

// Creates the channel's queues, which outlive it.
void create_queues(client::Channel channel);
[[noreturn]] void answer_all(client::Channel channel);

} // namespace soak

#endif
