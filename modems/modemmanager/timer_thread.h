// A thread that runs a task each time it is woken, or when the task is due.
#ifndef MODEMS_MODEMMANAGER_TIMER_THREAD_H
#define MODEMS_MODEMMANAGER_TIMER_THREAD_H

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

namespace modem_manager
{

using Time = std::chrono::steady_clock::time_point;

class TimerThread
{
public:
    // `task` returns when it is due again; nothing if it only runs when the thread is woken.
    explicit TimerThread(std::function<std::optional<Time>()> task);
    ~TimerThread();
    TimerThread(const TimerThread &) = delete;
    TimerThread &operator=(const TimerThread &) = delete;

    // Any thread may call. A wake() while the task runs makes it run once more.
    void wake();

    // `task` is not called any more; a call in progress goes on.
    void stop();

private:
    void run();

    std::function<std::optional<Time>()> task_;
    std::mutex mutex_; // of the two below
    std::condition_variable woken_condition_;
    bool woken_ = false, stopped_ = false;
    std::thread thread_;
};

} // namespace modem_manager

#endif
