#include "at_port.h"

#include "daemons/digits.h"
#include "daemons/printable.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <string_view>
#include <sys/eventfd.h>
#include <sys/ioctl.h>
#include <system_error>
#include <termios.h>
#include <unistd.h>

namespace modem_manager
{
namespace
{

using Clock = std::chrono::steady_clock;

// A number of +CME ERROR as the daemons have it: see daemons/cme_error.h. +CMS ERROR counts from
// 300; the errors of the SIM and of the memory are those of +CME ERROR there.
CmeError error_of_number(int number)
{
    constexpr int first_cms = 300, min_own = 10, moved_by = 200;
    if (number >= first_cms)
        number -= first_cms;
    if (number < min_own)
        number += moved_by;
    return daemons::find_cme_error(number) ? static_cast<CmeError>(number) : CmeError::unknown;
}

// Of the line that ends an answer; nothing of any other line.
std::optional<CmeError> final_result(std::string_view line)
{
    if (line == "OK")
        return CmeError::ok;
    if (line == "ERROR")
        return CmeError::unknown;
    if (line == "COMMAND NOT SUPPORT" || line == "NOT SUPPORTED")
        return CmeError::not_supported;
    for (const std::string_view prefix : {"+CME ERROR: ", "+CMS ERROR: "})
        if (line.starts_with(prefix)) {
            const std::optional<int> number = daemons::to_number(line.substr(prefix.size()));
            return number ? error_of_number(*number) : CmeError::unknown;
        }
    return std::nullopt;
}

// Raw, without echo, and without waiting for a carrier.
int open_port(const std::string &path)
{
    const int port = open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    termios settings{};
    if (port == -1 || tcgetattr(port, &settings) != 0) {
        close(port);
        return -1;
    }
    cfmakeraw(&settings);
    settings.c_cflag |= CLOCAL | CREAD;
    cfsetspeed(&settings, B115200);
    tcsetattr(port, TCSANOW, &settings);
    tcflush(port, TCIOFLUSH); // what an earlier command left
    return port;
}

// False at the end of the time, when asked to stop, or when the port is gone.
bool wait_for(int port, short event, int stop_event, Clock::time_point end)
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
    pollfd files[] = {{port, event, 0}, {stop_event, POLLIN, 0}};
    return left > 0 && poll(files, std::size(files), static_cast<int>(left)) > 0 &&
           files[1].revents == 0 && (files[0].revents & event) != 0;
}

bool raised(int event)
{
    pollfd file{event, POLLIN, 0};
    return poll(&file, 1, 0) > 0;
}

} // namespace

AtPort::AtPort(std::string path, bool verbose)
    : path_(std::move(path)), verbose_(verbose), stop_event_(eventfd(0, EFD_CLOEXEC))
{
    if (stop_event_ == -1)
        throw std::system_error(errno, std::generic_category(), "eventfd");
}

AtPort::~AtPort()
{
    close(stop_event_);
}

// NOLINTNEXTLINE(readability-make-member-function-const): other threads see it
void AtPort::stop()
{
    eventfd_write(stop_event_, 1);
}

AtAnswer AtPort::send(const std::string &command, bool secret, std::chrono::milliseconds limit)
{
    if (path_.empty())
        return {CmeError::not_supported, {}};
    const std::lock_guard lock(mutex_);
    const int port = raised(stop_event_) ? -1 : open_port(path_);
    if (port == -1)
        return {CmeError::no_connection_to_phone, {}};
    log("->", "AT" + (secret ? command.substr(0, command.find('=') + 1) + "*" : command));
    AtAnswer answer = exchange(port, "E0+CMEE=1", limit); // errors with their numbers
    if (answer.error == CmeError::ok)
        answer = exchange(port, command, limit);
    for (const std::string &line : answer.lines)
        log("<-", line);
    log("<-", std::to_string(static_cast<int>(answer.error)));
    close(port);
    return answer;
}

AtAnswer AtPort::exchange(int port, const std::string &command,
                          std::chrono::milliseconds limit) const
{
    const Clock::time_point end = Clock::now() + limit;
    const std::string text = "AT" + command + "\r";
    AtAnswer answer;
    if (!wait_for(port, POLLOUT, stop_event_, end) ||
        write(port, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
        return {CmeError::no_connection_to_phone, {}};
    std::string line;
    while (wait_for(port, POLLIN, stop_event_, end)) {
        char byte = 0;
        if (read(port, &byte, 1) != 1)
            return {CmeError::no_connection_to_phone, {}};
        if (byte != '\r' && byte != '\n') {
            line += byte;
            continue;
        }
        if (const auto result = final_result(line)) {
            answer.error = *result;
            return answer;
        }
        if (!line.empty() && line != "AT" + command) // the echo
            answer.lines.push_back(line);
        line.clear();
    }
    return {Clock::now() < end ? CmeError::no_connection_to_phone : CmeError::phone_failure, {}};
}

void AtPort::log(const char *direction, const std::string &text) const
{
    if (verbose_)
        std::fprintf(stderr, "port %s %s\n", direction, daemons::printable(text).c_str());
}

} // namespace modem_manager
