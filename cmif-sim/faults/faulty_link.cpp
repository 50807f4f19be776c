#include "faulty_link.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <utility>

namespace cmif_sim
{
namespace
{

using namespace daemons;
using namespace std::chrono_literals;

long code_of(const void *record)
{
    long code = 0;
    std::memcpy(&code, record, sizeof code);
    return code;
}

} // namespace

FaultyLink::FaultyLink(Channel channel, scenario::Clock &clock, OnRequest on_request, bool verbose)
    : channel_(channel), names_(names_of(channel)), clock_(clock),
      on_request_(std::move(on_request)), verbose_(verbose),
      queues_(names_.requests, names_.replies), thawed_(clock),
      delays_(std::make_shared<scenario::Pause>(clock))
{
}

bool FaultyLink::prepare()
{
    return queues_.prepare();
}

// The daemon's thread starts its process, so that it lasts as long as that thread.
std::shared_ptr<DaemonProcess> FaultyLink::process()
{
    const std::lock_guard lock(mutex_);
    thread_ = std::this_thread::get_id();
    if (state_ != State::ended && !process_) {
        process_ = std::make_shared<DaemonProcess>(names_.process, names_.requests);
        changed_.notify_all();
    }
    return process_;
}

std::optional<std::size_t> FaultyLink::receive(void *record, std::size_t room)
{
    held_work_.reset(); // a request that was held has been served
    const std::shared_ptr<DaemonProcess> process = this->process();
    if (!process)
        return std::nullopt;
    const auto payload = process->receive(record, room);
    if (process->ended())
        end(process.get());
    if (!payload)
        return std::nullopt;
    return is_served(record, *payload) ? payload : take_held(record);
}

// A request that a freeze has caught is served after it. From the thaw on that is work, for which a
// manual clock waits.
std::optional<std::size_t> FaultyLink::take_held(void *record)
{
    std::unique_lock lock(mutex_);
    while (held_ && state_ == State::frozen && !stopped_)
        thawed_.wait(lock);
    if (!held_ || stopped_) {
        held_work_.reset();
        return std::nullopt;
    }
    const std::string bytes = *std::exchange(held_, std::nullopt);
    std::memcpy(record, bytes.data(), bytes.size());
    ++taken_[code_of(record)];
    return bytes.size() - sizeof(long);
}

bool FaultyLink::is_served(const void *record, std::size_t payload)
{
    const long code = code_of(record);
    on_request_(code);
    for (const Fault &fault : faults_.take(FaultStage::request, code)) {
        log(fault, code);
        if (fault.kind->name == "freeze") {
            held_work_.emplace(clock_);
            const std::lock_guard lock(mutex_);
            held_.emplace(static_cast<const char *>(record), sizeof code + payload);
        }
        if (fault.kind->name != "ignore")
            act(fault);
        return false;
    }
    const std::lock_guard lock(mutex_);
    ++taken_[code];
    return state_ != State::ended;
}

void FaultyLink::log(const Fault &fault, long code) const
{
    if (verbose_)
        std::fprintf(stderr, "%s !! %ld fault: %s\n", names_.label, code,
                     std::string(fault.kind->name).c_str());
}

// The daemon's verbs end in their own time; what they answer after the daemon's end is lost.
void FaultyLink::end(const DaemonProcess *which)
{
    const std::lock_guard lock(mutex_);
    if (state_ == State::ended || (which && process_.get() != which))
        return;
    if (process_)
        process_->kill();
    process_.reset();
    held_.reset();
    for (const auto &[code, count] : std::exchange(taken_, {}))
        lost_[code] += count;
    std::exchange(delays_, std::make_shared<scenario::Pause>(clock_))->call_off();
    ++life_;
    state_ = State::ended;
    thawed_.wake();
}

// In the daemon's own thread there is nothing to wait for.
std::unique_lock<std::mutex> FaultyLink::lock_with_process()
{
    std::unique_lock lock(mutex_);
    if (thread_ != std::this_thread::get_id())
        changed_.wait_for(lock, 5s, [this] { return process_ || state_ == State::ended; });
    if (state_ == State::ended)
        throw std::runtime_error(std::string("the ") + names_.label + " daemon has ended");
    return lock;
}

void FaultyLink::freeze()
{
    const auto lock = lock_with_process();
    state_ = State::frozen;
    if (process_)
        process_->send(SIGSTOP);
}

void FaultyLink::thaw()
{
    const auto lock = lock_with_process();
    state_ = State::serving;
    thawed_.wake();
    if (process_)
        process_->send(SIGCONT);
}

void FaultyLink::restart()
{
    end(nullptr);
    set_ready(channel_, false);
    if (!prepare())
        throw std::runtime_error(std::string("the ") + names_.name + " queues can't be made");
    {
        const std::lock_guard lock(mutex_);
        state_ = State::serving;
    }
    lock_with_process().unlock();
    set_ready(channel_, true);
}

void FaultyLink::act(const Fault &fault)
{
    constexpr long no_request = 9000;
    const std::string_view kind = fault.kind->name;
    if (kind == "die")
        end(nullptr);
    else if (kind == "freeze")
        freeze();
    else if (kind == "thaw")
        thaw();
    else if (kind == "restart")
        restart();
    else if (kind == "not-ready" || kind == "ready")
        set_ready(channel_, kind == "ready");
    else if (kind == "remove-queue")
        remove_queue(fault.number == 0 ? names_.requests : names_.replies);
    else if (kind == "foreign")
        put_replies(channel_, no_request, fault.number);
    else if (kind == "stale")
        put_replies(channel_, fault.code.value(), fault.number);
}

void FaultyLink::add(const Fault &fault)
{
    if (fault.after.empty() && acts_at_once(fault))
        act(fault);
    else
        faults_.arm(fault);
}

void FaultyLink::event(std::string_view name)
{
    for (const Fault &fault : faults_.event(name))
        try {
            act(fault);
        } catch (const std::exception &error) {
            std::fprintf(stderr, "cmif-sim: fault %s: %s\n", describe(fault).c_str(), error.what());
        }
}

std::shared_ptr<void> FaultyLink::work()
{
    return std::make_shared<scenario::Work>(clock_);
}

void FaultyLink::stop()
{
    const std::lock_guard lock(mutex_);
    stopped_ = true;
    delays_->call_off();
    thawed_.wake();
}

// Counts the reply; nothing if it is of an earlier life.
std::optional<FaultyLink::Life> FaultyLink::life_of_reply(long code)
{
    const std::lock_guard lock(mutex_);
    std::map<long, int> &counts = lost_.contains(code) ? lost_ : taken_;
    if (--counts[code] <= 0)
        counts.erase(code);
    return &counts == &taken_ ? std::optional(Life{life_, delays_}) : std::nullopt;
}

// Waits while the daemon is frozen. Whether it still lives.
bool FaultyLink::may_answer(int life)
{
    std::unique_lock lock(mutex_);
    while (life_ == life && state_ == State::frozen && !stopped_)
        thawed_.wait(lock);
    return life_ == life && state_ != State::frozen;
}

bool FaultyLink::send(const void *record, std::size_t payload, const StopFlag &stop)
{
    const long code = code_of(record);
    const std::optional<Life> life = life_of_reply(code);
    if (!life)
        return false;
    Reply reply{channel_, code, {static_cast<const char *>(record) + sizeof code, payload}};
    for (const Fault &fault : faults_.take(FaultStage::reply, code)) {
        log(fault, code);
        fault.kind->apply(reply, fault.number);
    }
    if (reply.delay > 0ms && !life->delays->wait_for(clock_.scale().scaled(reply.delay)))
        return false;
    return may_answer(life->number) && send_copies(reply, stop);
}

bool FaultyLink::send_copies(const Reply &reply, const StopFlag &stop)
{
    const std::string bytes = record_of(reply.type, reply.payload);
    bool sent = false;
    for (int copies = reply.copies; copies > 0; --copies)
        sent = queues_.send(bytes.data(), reply.payload.size(), stop);
    return sent;
}

DaemonStatus FaultyLink::status() const
{
    const std::lock_guard lock(mutex_);
    DaemonStatus status{"ended", std::nullopt, faults_.descriptions()};
    if (state_ != State::ended)
        status.state = state_ == State::frozen ? "frozen"
                       : is_ready(channel_)    ? "serving"
                                               : "not ready";
    if (process_)
        status.process = process_->number();
    return status;
}

} // namespace cmif_sim
