// The two channels' names, queues and files.
#ifndef CMIF_SIM_FAULTS_CHANNEL_H
#define CMIF_SIM_FAULTS_CHANNEL_H

#include <cstddef>
#include <string>
#include <sys/types.h>

namespace cmif_sim
{

enum class Channel { at, qmi };

struct ChannelNames {
    const char *name;    // in commands
    const char *label;   // in the lines of --verbose
    const char *process; // at most 15 characters
    key_t requests, replies;
    std::size_t payload; // of a reply
};

const ChannelNames &names_of(Channel channel);

// The record as it goes into a queue.
std::string record_of(long code, const std::string &payload);

// Makes or removes the readiness marker; the AT daemon has none.
void set_ready(Channel channel, bool ready);
bool is_ready(Channel channel);

// Throws std::system_error if there is no such queue.
void remove_queue(key_t key);

// Puts `count` empty replies in the reply queue, as many as fit.
void put_replies(Channel channel, long code, int count);

} // namespace cmif_sim

#endif
