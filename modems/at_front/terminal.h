// A pseudo-terminal: the program at the other end takes it for a modem's port.
#ifndef MODEMS_AT_FRONT_TERMINAL_H
#define MODEMS_AT_FRONT_TERMINAL_H

#include <string>
#include <string_view>

namespace at_front
{

class Terminal
{
public:
    Terminal(); // throws std::system_error
    ~Terminal();
    Terminal(const Terminal &) = delete;
    Terminal &operator=(const Terminal &) = delete;

    const std::string &path() const { return path_; } // "/dev/pts/7"
    int file() const { return master_; }              // to be polled

    // What there is, at most one buffer. Nothing at the end.
    std::string read() const;
    // Gives up what no program takes within a while.
    void write(std::string_view text) const;

private:
    int master_ = -1;
    int slave_ = -1; // held open, so that the port lives on between two programs
    std::string path_;
};

} // namespace at_front

#endif
