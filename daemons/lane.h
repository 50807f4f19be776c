// A thread that serves requests one after the other, beside the thread that receives them.
#ifndef DAEMONS_LANE_H
#define DAEMONS_LANE_H

#include "at_requests.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace daemons
{

// A request with its decoded fields.
struct AtJob {
    const AtRequest *request = nullptr;
    AtArguments arguments;
};

class Lane
{
public:
    using Serve = std::function<void(const AtJob &job)>;

    // A limit, so that a process that sends without waiting for replies can't fill the memory.
    static constexpr std::size_t max_waiting = 64;

    explicit Lane(Serve serve);

    // Drops the jobs that wait, and returns when the one in progress is done.
    ~Lane();
    Lane(const Lane &) = delete;
    Lane &operator=(const Lane &) = delete;

    // False when too many wait already.
    bool push(AtJob job);

    // Takes the waiting jobs of this request away; how many there were.
    int take_all(const AtRequest &request);

private:
    void run();

    Serve serve_;
    std::mutex mutex_;
    std::condition_variable wake_up_;
    std::deque<AtJob> jobs_;
    bool ending_ = false;
    std::thread thread_;
};

} // namespace daemons

#endif
