// The names of what a scenario can wait for.
#ifndef SCENARIO_EVENTS_H
#define SCENARIO_EVENTS_H

#include "words.h"

namespace scenario
{

// The next word as an event's name; the next two for a request: "registered", "request 12".
std::string take_event(Words &words);

} // namespace scenario

#endif
