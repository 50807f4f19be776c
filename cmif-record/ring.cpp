#include "ring.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <new>
#include <sys/mman.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace cmif_record
{
namespace
{

constexpr std::uint32_t ring_version = 0x636D6601;
constexpr long patience_ms = 3000;

timespec monotonic()
{
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return time;
}

long long nanoseconds(const timespec &time)
{
    constexpr long long second = 1'000'000'000;
    return time.tv_sec * second + time.tv_nsec;
}

void pause_1_ms()
{
    constexpr timespec time{0, 1'000'000};
    int state = 0;
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &state);
    nanosleep(&time, nullptr);
    pthread_setcancelstate(state, nullptr);
}

std::string_view bytes_of(const void *start, std::size_t size)
{
    return {static_cast<const char *>(start), size};
}

} // namespace

// The mutex is free again when a process is killed while it has it.
Ring::Ring() : version_(ring_version), start_(nanoseconds(monotonic()))
{
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_setpshared(&attributes, PTHREAD_PROCESS_SHARED);
    pthread_mutexattr_setrobust(&attributes, PTHREAD_MUTEX_ROBUST);
    pthread_mutex_init(&mutex_, &attributes);
    pthread_mutexattr_destroy(&attributes);
}

void Ring::create(int file)
{
    void *memory = MAP_FAILED;
    if (ftruncate(file, sizeof(Ring)) == 0)
        memory = mmap(nullptr, sizeof(Ring), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    if (memory == MAP_FAILED)
        throw std::system_error(errno, std::generic_category(), "no memory to record in");
    unmap(new (memory) Ring); // default-initialized: the bytes stay as they are
}

Ring *Ring::map(int file)
{
    struct stat found = {};
    if (fstat(file, &found) != 0 || found.st_size != sizeof(Ring))
        return nullptr;
    void *memory = mmap(nullptr, sizeof(Ring), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    if (memory == MAP_FAILED)
        return nullptr;
    auto *ring = static_cast<Ring *>(memory);
    if (ring->version_ == ring_version)
        return ring;
    unmap(ring);
    return nullptr;
}

void Ring::unmap(Ring *ring)
{
    munmap(ring, sizeof(Ring));
}

// For the holder of the lock.
long long Ring::time() const
{
    return set_time_ == real_time ? nanoseconds(monotonic()) - start_ : set_time_;
}

long long Ring::now()
{
    const bool locked = lock();
    const long long now = time();
    if (locked)
        pthread_mutex_unlock(&mutex_);
    return now;
}

void Ring::set_time(long long time)
{
    if (!lock())
        return;
    set_time_ = time;
    pthread_mutex_unlock(&mutex_);
}

// Not without a limit: a process may have been stopped while it has the mutex.
bool Ring::lock()
{
    int result = pthread_mutex_trylock(&mutex_);
    if (result == EBUSY) {
        timespec end = monotonic();
        end.tv_sec += 1;
        result = pthread_mutex_clocklock(&mutex_, CLOCK_MONOTONIC, &end);
    }
    if (result == EOWNERDEAD) // its entry does not count, since appended_ is as it was
        result = pthread_mutex_consistent(&mutex_);
    return result == 0;
}

void Ring::put(std::string_view bytes)
{
    while (!bytes.empty()) {
        const std::uint32_t offset = end_ % capacity;
        const std::string_view part = bytes.substr(0, capacity - offset);
        std::memcpy(bytes_ + offset, part.data(), part.size());
        end_ += static_cast<std::uint32_t>(part.size());
        bytes.remove_prefix(part.size());
    }
}

bool Ring::append_now(Head &head, std::string_view name, std::string_view text)
{
    end_ = appended_;
    if (sizeof head + name.size() + text.size() > capacity - std::uint32_t{end_ - written_})
        return false;
    head.entry.time = time();
    put(bytes_of(&head, sizeof head));
    put(name);
    put(text);
    appended_ = end_;
    return true;
}

void Ring::append(Entry entry, std::string_view name, std::string_view text)
{
    Head head{entry, static_cast<std::uint32_t>(name.size()),
              static_cast<std::uint32_t>(text.size())};
    const bool fits = sizeof head + name.size() + text.size() <= capacity;
    for (long waited = 0; fits && waited < patience_ms && lock(); ++waited) {
        const bool appended = append_now(head, name, text);
        pthread_mutex_unlock(&mutex_);
        if (appended)
            return;
        if (stalled_)
            break;
        pause_1_ms();
    }
    stalled_ = true;
    ++lost_;
}

void Ring::wait_until_written() const
{
    const std::uint32_t end = appended_;
    const auto is_written = [&] { return static_cast<std::int32_t>(written_ - end) >= 0; };
    for (long waited = 0; waited < patience_ms && !is_written(); ++waited)
        pause_1_ms();
}

void Ring::copy(std::uint32_t position, char *to, std::size_t size) const
{
    const std::uint32_t offset = position % capacity;
    const std::size_t first = std::min<std::size_t>(size, capacity - offset);
    std::memcpy(to, bytes_ + offset, first);
    std::memcpy(to + first, bytes_, size - first);
}

// A recorded program that writes where it must not can have destroyed an entry's sizes: then all
// that is there is lost.
bool Ring::take(Item &item)
{
    const std::uint32_t available = appended_ - taken_;
    if (available == 0)
        return false;
    alignas(Head) char bytes[sizeof(Head)];
    copy(taken_, bytes, sizeof bytes);
    Head head;
    std::memcpy(&head, bytes, sizeof head);
    const std::uint64_t size =
        sizeof head + std::uint64_t{head.name_size} + std::uint64_t{head.text_size};
    if (available > capacity || size > available) {
        taken_ += available;
        ++lost_;
        return false;
    }
    item.entry = head.entry;
    item.name.resize(head.name_size);
    item.text.resize(head.text_size);
    const std::uint32_t name = taken_ + sizeof head, text = name + head.name_size;
    copy(name, item.name.data(), item.name.size());
    copy(text, item.text.data(), item.text.size());
    taken_ = text + head.text_size;
    return true;
}

void Ring::written()
{
    written_ = taken_;
    stalled_ = false;
}

} // namespace cmif_record
