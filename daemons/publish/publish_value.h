// One value for the configuration store.
#ifndef DAEMONS_PUBLISH_PUBLISH_VALUE_H
#define DAEMONS_PUBLISH_PUBLISH_VALUE_H

#include "platform/tarn_nvram_config.h"

#include <string>

namespace daemons
{

// How many values this thread has written.
inline thread_local unsigned written_values = 0;

// Writes only what differs: a write costs many times what a comparison costs.
inline void publish_value(const std::string &key, const std::string &value)
{
    if (tarnNvramConfig_match(key.c_str(), value.c_str()))
        return;
    tarnNvramConfig_set(key.c_str(), value.c_str());
    ++written_values;
}

} // namespace daemons

#endif
