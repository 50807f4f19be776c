#include "unanswered.h"

#include "failure.h"
#include "process.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <sys/ipc.h>
#include <sys/msg.h>
#include <sys/shm.h>
#include <unistd.h>

namespace client
{
namespace
{

constexpr key_t table_key = 0x434d4946; // "CMIF"

struct Entry {
    int count;
    int queue;    // of the oldest of them
    double since; // when it was sent
};

// The last process of ours that took something off the request queue, or is about to.
struct Withdrawer {
    std::atomic<pid_t> client;
    std::atomic<pid_t> before; // the queue's last reader until then, a client or the daemon
    std::atomic<pid_t> daemon; // the daemon that both hide
};

// 0 while nothing was taken.
pid_t last_reader(Channel channel)
{
    msqid_ds state{};
    const bool known = msgctl(msgget(request_key(channel), 0), IPC_STAT, &state) == 0;
    return known ? state.msg_lrpid : 0;
}

} // namespace

// Zeros mean nothing at all: a fresh segment needs no second step.
struct Unanswered::Table {
    Withdrawer &withdrawer(Channel channel)
    {
        return withdrawers.at(channel == Channel::at ? 0 : 1);
    }

    std::array<Entry, max_slots> entries;
    std::array<Withdrawer, 2> withdrawers; // of the AT and the QMI channel
};

Unanswered::Unanswered()
{
    const int segment = shmget(table_key, sizeof(Table), IPC_CREAT | 0666);
    void *memory = segment == -1 ? reinterpret_cast<void *>(-1) : shmat(segment, nullptr, 0);
    if (memory == reinterpret_cast<void *>(-1))
        throw Failure(Exit::other,
                      std::string("the table of unanswered requests can't be used: ") +
                          std::strerror(errno),
                      "'ipcs -m' shows the system's shared memory and its owners.");
    table_ = static_cast<Table *>(memory);
}

Unanswered::~Unanswered()
{
    shmdt(table_);
}

int Unanswered::count(RequestCode request) const
{
    const auto slot = slot_of(request);
    return slot ? table_->entries.at(static_cast<std::size_t>(*slot)).count : 0;
}

double Unanswered::age(RequestCode request) const
{
    const auto slot = slot_of(request);
    return slot ? boot_time_now() - table_->entries.at(static_cast<std::size_t>(*slot)).since : 0;
}

void Unanswered::add(RequestCode request)
{
    const auto slot = slot_of(request);
    if (!slot)
        return;
    Entry &entry = table_->entries.at(static_cast<std::size_t>(*slot));
    if (entry.count == 0) {
        entry.queue = msgget(request_key(request.channel), 0);
        entry.since = boot_time_now();
    }
    ++entry.count;
}

void Unanswered::remove(RequestCode request, int replies)
{
    const auto slot = slot_of(request);
    if (!slot)
        return;
    Entry &entry = table_->entries.at(static_cast<std::size_t>(*slot));
    entry.count = std::max(0, entry.count - replies);
}

bool Unanswered::is_awaited(RequestCode request) const
{
    return count(request) > 0 && !is_lost(request);
}

bool Unanswered::is_lost(RequestCode request) const
{
    const auto slot = slot_of(request);
    if (!slot)
        return false;
    const Entry &entry = table_->entries.at(static_cast<std::size_t>(*slot));
    const pid_t daemon = daemon_of(request.channel);
    const bool queue_remade = entry.queue != msgget(request_key(request.channel), 0);
    const bool daemon_ended = daemon > 0 && !process_exists(daemon);
    const bool daemon_restarted = daemon > 0 && start_time(daemon) > entry.since;
    const bool too_old = boot_time_now() - entry.since > max_wait;
    return queue_remade || daemon_ended || daemon_restarted || too_old;
}

void Unanswered::forget_lost(RequestCode request)
{
    if (is_lost(request))
        remove(request, count(request));
}

// In this order, so that daemon_of() is right in between, too.
void Unanswered::note_withdrawal(Channel channel)
{
    const pid_t before = last_reader(channel);
    Withdrawer &withdrawer = table_->withdrawer(channel);
    withdrawer.daemon = daemon_of(channel);
    withdrawer.before = before;
    withdrawer.client = getpid();
}

// The kernel names the thread of a receiver that slept.
pid_t Unanswered::daemon_of(Channel channel) const
{
    const pid_t reader = last_reader(channel);
    const Withdrawer &last = table_->withdrawer(channel);
    const bool hidden = reader != 0 && (reader == last.client || reader == last.before);
    return hidden ? last.daemon.load() : process_of(reader);
}

} // namespace client
