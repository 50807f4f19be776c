// The simulated modem as all AT ports share it, with what the AT commands alone keep.
#ifndef MODEMS_AT_FRONT_DEVICE_H
#define MODEMS_AT_FRONT_DEVICE_H

#include "answer_faults.h"
#include "modems/simulated/modem.h"

#include <array>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string>

namespace at_front
{

using daemons::CmeError;
using simulated::ModemState;
using simulated::Time;

struct Credentials {
    daemons::Authentication kind = daemons::Authentication::none;
    std::string user{}, password{};
};

// For the threads of the ports.
class Device
{
public:
    // `model` is what +CGMM answers.
    Device(simulated::Modem &modem, AnswerFaults &answer_faults, std::string model);
    ~Device(); // no thread waits any more
    Device(const Device &) = delete;
    Device &operator=(const Device &) = delete;

    simulated::Modem &modem() { return modem_; }
    AnswerFaults &answer_faults() { return answer_faults_; }
    const std::string &model() const { return model_; }
    daemons::ModemStatus status() const { return modem_.status(); }

    // Returns what `read` makes of the state.
    template <typename Read>
    auto inspect(Read read) const
    {
        decltype(read(std::declval<const ModemState &>(), Time())) result{};
        modem_.inspect([&](const ModemState &state, Time now) { result = read(state, now); });
        return result;
    }
    // What `act` does to the state; its answer.
    CmeError change(const std::function<CmeError(ModemState &state, Time now)> &act);

    // Waits until `done`, which is asked after each change of the modem. False when that took
    // longer than `limit`, when `given_up` holds, or at the end.
    bool wait_until(const std::function<bool()> &done, scenario::Duration limit,
                    const std::function<bool()> &given_up);

    // Wakes all waiting threads, which check their conditions again.
    void wake();
    // Ends all waiting.
    void stop();

    // `changed` is called after each change of the modem, from any thread; it must call nothing
    // here.
    void watch(std::function<void()> changed);

    // The number of the data connection's context, and the credentials of each context.
    std::optional<int> active_context() const;
    void set_active_context(std::optional<int> number);
    Credentials credentials(int context) const;
    void set_credentials(int context, Credentials credentials);

    int radio_access() const; // as the vendor's +URAT numbers it
    void set_radio_access(int selection);

    // Local time, as seconds since 1970. It runs on from what was set, at first from power on.
    std::time_t clock() const;
    void set_clock(std::time_t local);

private:
    simulated::Modem &modem_;
    AnswerFaults &answer_faults_;
    std::string model_;
    mutable std::mutex mutex_; // of all below
    std::condition_variable changed_;
    unsigned changes_ = 0;
    bool stopped_ = false;
    std::optional<int> active_context_;
    std::array<Credentials, simulated::Profiles::max_profiles + 1> credentials_;
    int radio_access_ = 4;
    std::time_t clock_set_ = 1'709'726'400; // 2024-03-06 12:00:00
    Time clock_set_at_{};
    std::mutex watch_mutex_;
    std::function<void()> watcher_;
};

} // namespace at_front

#endif
