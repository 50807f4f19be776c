// A thread that looks at something again when it is woken, or when its time has come.
#ifndef MODEMS_MODEMMANAGER_WORKER_H
#define MODEMS_MODEMMANAGER_WORKER_H

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

namespace modem_manager
{

using Time = std::chrono::steady_clock::time_point;

class Worker
{
public:
    // `look` says when it wants to be called again without being woken; nothing for never.
    explicit Worker(std::function<std::optional<Time>()> look);
    ~Worker();
    Worker(const Worker &) = delete;
    Worker &operator=(const Worker &) = delete;

    // Any thread may call; a wake() during a look leads to another one.
    void wake();

    // `look` is not called any more; a call in progress goes on.
    void stop();

private:
    void run();

    std::function<std::optional<Time>()> look_;
    std::mutex mutex_; // of the two below
    std::condition_variable woken_condition_;
    bool woken_ = false, stopped_ = false;
    std::thread thread_;
};

} // namespace modem_manager

#endif
