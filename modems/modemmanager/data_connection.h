// Brings the data connection up and down, on a thread of its own: either may take minutes.
#ifndef MODEMS_MODEMMANAGER_DATA_CONNECTION_H
#define MODEMS_MODEMMANAGER_DATA_CONNECTION_H

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace modem_manager
{

class DataConnection
{
public:
    // The first two block. All but `abort` are called from the thread.
    struct Actions {
        std::function<void()> dial, hang_up;
        std::function<void()> done;  // with either; busy() may be false now
        std::function<void()> abort; // ends a dial in progress, from any thread
    };

    explicit DataConnection(Actions actions);
    ~DataConnection();
    DataConnection(const DataConnection &) = delete;
    DataConnection &operator=(const DataConnection &) = delete;

    // What is to be done next; each replaces what was asked for before and did not begin.
    void connect() { want(Want::up); }
    void disconnect() { want(Want::down); }
    void reconnect() { want(Want::again); }

    // From when something is wanted until it is done.
    bool busy() const;

    // Whether something else has been asked for since the action in progress began.
    bool superseded() const;

    // Lets nothing more begin. The dial in progress must be ended by the caller.
    void stop();

private:
    enum class Want { nothing, up, down, again };

    void want(Want what);
    void run();

    Actions actions_;
    mutable std::mutex mutex_; // of the three below
    std::condition_variable wanted_condition_;
    Want wanted_ = Want::nothing;
    bool working_ = false, stopped_ = false;
    std::thread thread_;
};

} // namespace modem_manager

#endif
