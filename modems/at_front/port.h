// One AT port: a terminal, what reads from it, and what carries commands out and reports.
#ifndef MODEMS_AT_FRONT_PORT_H
#define MODEMS_AT_FRONT_PORT_H

#include "interpreter.h"
#include "terminal.h"

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
    explicit Port(Device &device); // throws std::system_error
    ~Port();                       // after Device::stop()
    Port(const Port &) = delete;
    Port &operator=(const Port &) = delete;

    const std::string &path() const { return terminal_.path(); }

    // The modem has changed. From any thread.
    void report();

private:
    void read();
    void take(char c);
    void work();
    std::string carry_out(const std::string &line);

    Device &device_;
    Terminal terminal_;
    int end_[2] = {-1, -1}; // a pipe: closed at the end
    std::atomic<bool> echo_ = true, takes_text_ = false, working_ = false, called_off_ = false;
    Interpreter interpreter_; // of the thread that carries out
    std::string typed_;       // of the thread that reads

    std::mutex mutex_; // of all below
    std::condition_variable changed_;
    std::deque<std::string> lines_;
    bool report_ = false, ending_ = false;

    std::thread reader_, worker_;
};

} // namespace at_front

#endif
