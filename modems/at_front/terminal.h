// A pseudo-terminal: the program at the other end takes it for a modem's port.
#ifndef MODEMS_AT_FRONT_TERMINAL_H
#define MODEMS_AT_FRONT_TERMINAL_H

#include "wire.h"

namespace at_front
{

class Terminal : public Wire
{
public:
    Terminal(); // throws std::system_error
    ~Terminal() override;

    const std::string &path() const override { return path_; } // "/dev/pts/7"
    int file() const override { return master_; }
    std::string read() override;
    void write(std::string_view text) override;

private:
    int master_ = -1;
    int slave_ = -1; // held open, so that the port lives on between two programs
    std::string path_;
};

Wires terminals(std::size_t count); // throws std::system_error

} // namespace at_front

#endif
