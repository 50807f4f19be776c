// The end of a port that the modem holds: characters come in and go out.
#ifndef MODEMS_AT_FRONT_WIRE_H
#define MODEMS_AT_FRONT_WIRE_H

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace at_front
{

class Wire
{
public:
    Wire() = default;
    virtual ~Wire() = default;
    Wire(const Wire &) = delete;
    Wire &operator=(const Wire &) = delete;

    virtual const std::string &path() const = 0; // that a program opens
    virtual int file() const = 0;                // to be polled; for the thread that reads

    // What there is, at most one buffer. Nothing at the end.
    virtual std::string read() = 0;
    // Gives up what no program takes within a while. From any thread.
    virtual void write(std::string_view text) = 0;
};

using Wires = std::vector<std::unique_ptr<Wire>>;

// All of it, or as much as the non-blocking `file` takes without a pause of a second. Never raises
// SIGPIPE.
void write_patiently(int file, std::string_view text);

} // namespace at_front

#endif
