// The connection to the bus on which ModemManager lives, with a thread of its own for what arrives.
#ifndef MODEMS_MODEMMANAGER_BUS_H
#define MODEMS_MODEMMANAGER_BUS_H

#include "errors.h"
#include "value.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace modem_manager
{

struct Call {
    std::string path;
    const char *interface;
    const char *method;
    Value arguments{};                                      // a tuple
    bool secret = false;                                    // the arguments stay out of the log
    std::chrono::seconds limit = std::chrono::seconds(360); // above the longest search
};

struct Reply {
    CmeError error = CmeError::ok;
    Value value;         // a tuple
    bool denied = false; // to this user
};

struct Signal {
    std::string path, interface, member;
    Value arguments;
};

class Bus
{
public:
    // All three are called from the bus's thread. They may call(); `opened` also follows when the
    // connection was lost and is there again, or when ModemManager has come or gone.
    struct Handlers {
        std::function<void()> opened;
        std::function<void(const Signal &)> signalled;
        std::function<void()> closed;
    };

    // "" is the system bus. `verbose` prints each call on standard error.
    Bus(std::string address, bool verbose, Handlers handlers);
    ~Bus();
    Bus(const Bus &) = delete;
    Bus &operator=(const Bus &) = delete;

    // Connects and begins to listen; "" or why that failed. Then it is tried again until it works.
    std::string start();

    // Any thread may call. no_connection_to_phone without a connection, and for what was cut short.
    Reply call(const Call &call);

    // Calls in progress end: those of one method, or all.
    void cancel(std::string_view method = {});

    // The same, and no other begins.
    void stop();

    // Also ends the thread: no handler is called any more.
    void end();

private:
    using Cancellables = std::list<std::pair<std::string_view, ObjectPtr<GCancellable>>>;
    class Progress;

    void run(std::promise<std::string> &&first);
    std::string open();
    void subscribe(GDBusConnection *connection);
    void lose();
    void retry_later();
    std::shared_ptr<GDBusConnection> connection() const;
    void report_denial(const Call &call);
    void log(const char *direction, const Call &call, const std::string &text) const;

    std::string address_;
    bool verbose_;
    Handlers handlers_;
    ContextPtr context_;
    LoopPtr loop_;
    mutable std::mutex mutex_; // of all below
    std::shared_ptr<GDBusConnection> connection_;
    Cancellables in_progress_;
    bool stopped_ = false;
    std::atomic<bool> denial_reported_ = false;
    std::thread thread_;
};

} // namespace modem_manager

#endif
