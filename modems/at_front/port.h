// One AT port: what reads from it, and what carries commands out and reports.
#ifndef MODEMS_AT_FRONT_PORT_H
#define MODEMS_AT_FRONT_PORT_H

#include "interpreter.h"
#include "wire.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace at_front
{

class Port
{
public:
    Port(Device &device, std::unique_ptr<Wire> wire); // throws std::system_error
    ~Port();                                          // after Device::stop()
    Port(const Port &) = delete;
    Port &operator=(const Port &) = delete;

    const std::string &path() const { return wire_->path(); }

    // The modem has changed. From any thread.
    void report();

private:
    void read();
    void take(char c);
    void work();
    std::string carry_out(const std::string &line);

    Device &device_;
    std::unique_ptr<Wire> wire_;
    int end_[2] = {-1, -1}; // a pipe: closed at the end
    std::atomic<bool> echo_ = true, takes_text_ = false, working_ = false, called_off_ = false;
    Interpreter interpreter_; // of the thread that carries out
    std::string typed_;       // of the thread that reads
    char previous_ = '\0';    // of the same

    std::mutex mutex_; // of all below
    std::condition_variable changed_;
    std::deque<std::string> lines_;
    bool report_ = false, ending_ = false;

    std::thread reader_, worker_;
};

} // namespace at_front

#endif
