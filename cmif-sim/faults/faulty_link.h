// A link of the simulated router: a daemon's way to its queues, through a process of its own, and
// with faults on the way.
#ifndef CMIF_SIM_FAULTS_FAULTY_LINK_H
#define CMIF_SIM_FAULTS_FAULTY_LINK_H

#include "cmif-sim/control/box_status.h"
#include "daemon_process.h"
#include "daemons/link.h"
#include "fault_list.h"
#include "scenario/work.h"

#include <condition_variable>
#include <functional>
#include <map>
#include <memory>
#include <thread>

namespace cmif_sim
{

using OnRequest = std::function<void(long code)>;

class FaultyLink final : public daemons::Link
{
public:
    // `on_request` is called with each request that the daemon takes.
    FaultyLink(Channel channel, scenario::Clock &clock, OnRequest on_request, bool verbose);

    bool prepare() override;
    std::optional<std::size_t> receive(void *record, std::size_t room) override;
    std::shared_ptr<void> work() override;
    bool send(const void *record, std::size_t payload, const daemons::StopFlag &stop) override;

    // Cuts delays short, before the daemon is ended.
    void stop();

    // Carries the fault out now, or arms it. Throws std::exception when that fails.
    void add(const Fault &fault);
    void event(std::string_view name);
    void clear_faults() { faults_.clear(); }

    DaemonStatus status() const;

private:
    enum class State { serving, frozen, ended };

    std::shared_ptr<DaemonProcess> process();
    std::optional<std::size_t> take_held(void *record);
    bool is_served(const void *record, std::size_t payload);
    void log(const Fault &fault, long code) const;

    void act(const Fault &fault);
    void end(const DaemonProcess *which); // any, if null
    void freeze();
    void thaw();
    void restart();
    std::unique_lock<std::mutex> lock_with_process();

    struct Life {
        int number;
        std::shared_ptr<scenario::Pause> delays;
    };
    std::optional<Life> life_of_reply(long code);
    bool may_answer(int life);
    bool send_copies(const Reply &reply, const daemons::StopFlag &stop);

    Channel channel_;
    const ChannelNames &names_;
    scenario::Clock &clock_;
    OnRequest on_request_;
    bool verbose_;
    daemons::QueueLink queues_;
    FaultList faults_;

    std::optional<scenario::Work> held_work_; // of the daemon's thread

    mutable std::mutex mutex_; // of all below
    std::condition_variable changed_;
    scenario::Waiters thawed_; // or over
    State state_ = State::serving;
    bool stopped_ = false;
    std::shared_ptr<scenario::Pause> delays_; // of this life
    int life_ = 0;                            // counts the daemon's lives
    std::map<long, int> taken_, lost_;        // requests by code: of this life, of earlier ones
    std::optional<std::string> held_;         // a request that was taken just before a freeze
    std::thread::id thread_;                  // the daemon's, which waits for requests
    std::shared_ptr<DaemonProcess> process_;  // none before the first request is waited for
};

} // namespace cmif_sim

#endif
