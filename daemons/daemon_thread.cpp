#include "daemon_thread.h"

#include <csignal>

namespace daemons
{
namespace
{

using namespace std::chrono_literals;

// Interrupts the thread's wait for a request; the signal itself does nothing.
constexpr int wake_up_signal = SIGUSR1;

void ignore_wake_up()
{
    struct sigaction action {
    };
    action.sa_handler = [](int) {}; // and no SA_RESTART
    sigaction(wake_up_signal, &action, nullptr);
}

} // namespace

DaemonThread::DaemonThread(Link &link, const StopFlag &stop, Serve serve)
    : link_(link), stop_(stop), serve_(std::move(serve))
{
    ignore_wake_up();
    thread_ = std::thread([this] { run(); });
}

// A signal that comes just before the wait is lost, so it is sent until the thread has ended.
DaemonThread::~DaemonThread()
{
    while (!ended_) {
        pthread_kill(thread_.native_handle(), wake_up_signal);
        std::this_thread::sleep_for(2ms);
    }
    thread_.join();
}

// Without a queue (the system's limit reached, perhaps) the thread tries again a little later.
void DaemonThread::run()
{
    alignas(long) char record[sizeof(long) + max_payload];
    while (!stop_.raised()) {
        if (const auto payload = link_.receive(record, max_payload))
            serve_(record, *payload);
        else
            stop_.wait_for(10ms);
    }
    ended_ = true;
}

} // namespace daemons
