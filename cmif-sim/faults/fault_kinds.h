// The kinds of faults that a daemon can be told to show, and what each does to a reply.
#ifndef CMIF_SIM_FAULTS_FAULT_KINDS_H
#define CMIF_SIM_FAULTS_FAULT_KINDS_H

#include "channel.h"

#include <chrono>
#include <span>
#include <string>
#include <string_view>

namespace cmif_sim
{

// A reply on its way out.
struct Reply {
    Channel channel;
    long type;
    std::string payload;
    std::chrono::milliseconds delay{0};
    int copies = 1;
};

enum class FaultStage {
    reply,   // the request is carried out, its reply goes wrong
    request, // when a request is taken; a freeze or an end without a code or a number: at once
    once,    // at once, or after an event
};

// What follows the kind's name.
enum class FaultValue { none, duration, number, optional_number, queue };

struct FaultKind {
    std::string_view name;
    FaultStage stage;
    FaultValue value;
    int min, max, usual;       // of the number
    std::string_view argument; // as help shows it
    std::string_view summary;
    void (*apply)(Reply &reply, int number) = nullptr; // of a reply
};

std::span<const FaultKind> fault_kinds();
const FaultKind *find_fault_kind(std::string_view name);

} // namespace cmif_sim

#endif
