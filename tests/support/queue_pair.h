// The two real queues of a channel, as the daemon sees them, and a daemon that follows a script.
//
//     QueuePair queues = QueuePair::at();
//     ScriptedDaemon daemon(queues, [&](const Message &request) {
//         store::set("lte_sim_pin_mode", "1");
//         queues.reply(request.type, at_reply(0));
//     });
//
// A script may answer late, twice, with another type first, or not at all; it may remove a queue.
// It runs in a thread of this process, so that it shares the store. A test without a daemon leaves
// a reply on the queue beforehand and takes the request off afterwards.
#ifndef TESTS_SUPPORT_QUEUE_PAIR_H
#define TESTS_SUPPORT_QUEUE_PAIR_H

#include "system_calls.h"

#include <functional>
#include <mutex>
#include <optional>
#include <thread>

// Creates both queues, and removes what is left of them in the end.
class QueuePair
{
public:
    static QueuePair at() { return {899, 900, 116}; }
    static QueuePair qmi() { return {1158, 1159, 312}; }

    QueuePair(key_t requests, key_t replies, size_t payload);
    ~QueuePair();
    QueuePair(const QueuePair &) = delete;
    QueuePair &operator=(const QueuePair &) = delete;

    [[nodiscard]] int requests() const { return requests_; }
    [[nodiscard]] int replies() const { return replies_; }

    // Puts a message on the reply queue.
    void reply(long type, const std::string &payload) const;

    // Takes the next request; waits for one.
    [[nodiscard]] Message wait_for_request() const;

    // Takes the first message off a queue, if there is one.
    [[nodiscard]] std::optional<Message> take_request() const { return take(requests_); }
    [[nodiscard]] std::optional<Message> take_reply() const { return take(replies_); }

    void remove_requests() const { remove(requests_); }
    void remove_replies() const { remove(replies_); }

private:
    friend class ScriptedDaemon;
    [[nodiscard]] std::optional<Message> take(int queue, int flags) const;
    [[nodiscard]] std::optional<Message> take(int queue) const;
    static void remove(int queue);

    int requests_;
    int replies_;
    size_t payload_;
};

class ScriptedDaemon
{
public:
    using Script = std::function<void(const Message &request)>;

    ScriptedDaemon(const QueuePair &queues, Script script);
    ~ScriptedDaemon(); // lets the script finish with every request still queued
    ScriptedDaemon(const ScriptedDaemon &) = delete;
    ScriptedDaemon &operator=(const ScriptedDaemon &) = delete;

    // Every request so far, as it came.
    std::vector<Message> requests();

private:
    void serve();

    const QueuePair &queues_;
    Script script_;
    std::mutex mutex_;
    std::vector<Message> requests_;
    std::thread thread_;
};

// Whether the queue of this key exists, and its permissions.
bool queue_exists(key_t key);
unsigned queue_mode(key_t key);

#endif
