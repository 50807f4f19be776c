#include "port.h"

#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace at_front
{
namespace
{

constexpr char carriage_return = '\r', newline = '\n', backspace = '\b', escape = '\x1b',
               control_z = '\x1a';

} // namespace

Port::Port(Device &device, std::unique_ptr<Wire> wire)
    : device_(device), wire_(std::move(wire)),
      interpreter_(device, [this] { return called_off_.load(); })
{
    if (pipe2(end_, O_CLOEXEC) != 0)
        throw std::system_error(errno, std::generic_category(), "pipe");
    reader_ = std::thread([this] { read(); });
    worker_ = std::thread([this] { work(); });
}

Port::~Port()
{
    close(end_[1]);
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
        changed_.notify_all();
    }
    reader_.join();
    worker_.join();
    close(end_[0]);
}

void Port::report()
{
    const std::lock_guard lock(mutex_);
    report_ = true;
    changed_.notify_all();
}

void Port::read()
{
    pollfd files[] = {{end_[0], POLLIN, 0}, {wire_->file(), POLLIN, 0}};
    while (poll(files, 2, -1) >= 0 || errno == EINTR) {
        if (files[0].revents != 0)
            return;
        for (const char c : wire_->read())
            take(c);
        files[1].fd = wire_->file();
    }
}

// While a command is carried out, a character calls it off and is lost. The line feed after a
// command's carriage return, which many programs send, belongs to that line.
void Port::take(char c)
{
    if (std::exchange(previous_, c) == carriage_return && c == newline)
        return;
    if (working_) {
        called_off_ = true;
        device_.wake();
        return;
    }
    if (echo_)
        wire_->write({&c, 1});
    const bool text = takes_text_;
    if (c == backspace && !typed_.empty()) {
        typed_.pop_back();
        return;
    }
    const bool ends = text ? c == control_z || c == escape : c == carriage_return;
    if (!ends) {
        if (c != newline && c != carriage_return)
            typed_ += c;
        else if (text && c == carriage_return)
            typed_ += newline; // a line of a message's text
        return;
    }
    const std::lock_guard lock(mutex_);
    lines_.push_back(std::exchange(typed_, "") + c);
    called_off_ = false;
    working_ = true;
    changed_.notify_all();
}

std::string Port::carry_out(const std::string &line)
{
    const std::string content = line.substr(0, line.size() - 1);
    if (!interpreter_.takes_text())
        return interpreter_.run(content);
    return line.back() == escape ? interpreter_.give_up_text() : interpreter_.run_text(content);
}

void Port::work()
{
    std::unique_lock lock(mutex_);
    while (!ending_) {
        if (lines_.empty() && !report_) {
            changed_.wait(lock);
            continue;
        }
        report_ = false;
        const bool commanded = !lines_.empty();
        const std::string line = commanded ? lines_.front() : "";
        lock.unlock();
        const std::string answer = commanded ? carry_out(line) : "";
        echo_ = interpreter_.echoes() && !interpreter_.takes_text();
        takes_text_ = interpreter_.takes_text();
        lock.lock();
        if (commanded) {
            lines_.pop_front();
            working_ = false;
        }
        lock.unlock();
        wire_->write(answer + (interpreter_.takes_text() ? "" : interpreter_.reports()));
        lock.lock();
    }
}

} // namespace at_front
