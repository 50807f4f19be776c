// The faults that are armed on a link, until a request, a reply or an event sets them off.
#ifndef CMIF_SIM_FAULTS_FAULT_LIST_H
#define CMIF_SIM_FAULTS_FAULT_LIST_H

#include "fault_kinds.h"

#include <mutex>
#include <optional>
#include <vector>

namespace cmif_sim
{

struct Fault {
    const FaultKind *kind = nullptr;
    std::optional<long> code = {}; // any, if there is none
    int number = 0;                // milliseconds, for a duration
    std::optional<int> times = {}; // how often it still acts; always, if there is none
    std::string after = {};        // it acts only once this event has happened
};

// "12 delay 5s, next 2 after registered"
std::string describe(const Fault &fault);

// Any thread may call.
class FaultList
{
public:
    void arm(const Fault &fault);
    void clear();
    std::vector<std::string> descriptions() const;

    // The faults that act at this stage on a request of this code, each counted as used once.
    std::vector<Fault> take(FaultStage stage, long code);

    // Makes the faults that waited for the event act from now on; returns those that act at once.
    std::vector<Fault> event(std::string_view name);

private:
    mutable std::mutex mutex_;
    std::vector<Fault> armed_;
};

// Returns whether it acts without a request: when it is given, or when its event happens.
bool acts_at_once(const Fault &fault);

} // namespace cmif_sim

#endif
