// Memory that the recorded processes and the writer share. Entries lie there, in the order in which
// they were appended, until the writer has written them; a process that is killed takes none along.
#ifndef CMIF_RECORD_RING_H
#define CMIF_RECORD_RING_H

#include "entry.h"

#include <atomic>
#include <pthread.h>
#include <string>

namespace cmif_record
{

class Ring
{
public:
    // Lays a ring out in an empty file of memory. Fails with std::system_error.
    static void create(int file);
    // Null when this is no ring of this version. Stays when the file is closed.
    static Ring *map(int file);
    static void unmap(Ring *ring);

    Ring(const Ring &) = delete;
    Ring &operator=(const Ring &) = delete;

    // Fills in the time. While the ring is full it waits for the writer, for a few seconds at most;
    // what finds no room by then is counted as lost. No point of cancellation; changes errno.
    void append(Entry entry, std::string_view name, std::string_view text);

    // Waits, for a few seconds at most, until what was appended so far is in the file.
    void wait_until_written() const;

    // From now on time stands at this many nanoseconds, until the next call.
    void set_time(long long time);

    // --- For the writer alone ---

    struct Item {
        Entry entry;
        std::string name, text;
    };

    bool take(Item &item); // the next one; false when there is none
    void written();        // all that was taken
    // How many entries were lost since the last call, and the time.
    unsigned take_lost() { return lost_.exchange(0); }
    long long now();
    bool is_half_full() const { return appended_ - written_ > capacity / 2; }

private:
    static constexpr std::uint32_t capacity = 1 << 20;
    static constexpr long long real_time = -1;

    struct Head {
        Entry entry;
        std::uint32_t name_size, text_size;
    };

    Ring();
    bool lock();
    long long time() const;
    bool append_now(Head &head, std::string_view name, std::string_view text);
    void put(std::string_view bytes);
    void copy(std::uint32_t position, char *to, std::size_t size) const;

    std::uint32_t version_;
    long long start_; // of the monotonic clock

    pthread_mutex_t mutex_; // of those who append
    long long set_time_ = real_time;
    std::uint32_t end_ = 0; // where put() goes on

    // Positions grow, beyond the largest number to 0 again: 64 bits are not atomic everywhere. They
    // begin shortly before it, so that no recording is the first to pass it. What lies from
    // written_ to appended_ is whole.
    static constexpr std::uint32_t start_position = 0U - capacity / 16;
    std::atomic<std::uint32_t> appended_ = start_position, written_ = start_position;
    std::uint32_t taken_ = start_position;
    std::atomic<unsigned> lost_ = 0;
    std::atomic<bool> stalled_ = false; // an entry found no room in time
    char bytes_[capacity];
};

static_assert(std::atomic<std::uint32_t>::is_always_lock_free);

} // namespace cmif_record

#endif
