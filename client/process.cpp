#include "process.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace client
{
namespace
{

std::string first_line(const std::string &path)
{
    std::string line;
    std::getline(std::ifstream(path) >> std::ws, line);
    return line;
}

// The fields of the process's stat file after its name, which is in parentheses.
std::istringstream stat_fields(pid_t process)
{
    const std::string all = first_line("/proc/" + std::to_string(process) + "/stat");
    const std::size_t name_end = all.rfind(')');
    return std::istringstream(name_end == std::string::npos ? "" : all.substr(name_end + 1));
}

} // namespace

std::string process_name(pid_t process)
{
    if (process <= 0)
        return "a process of another PID namespace";
    const std::string number = std::to_string(process);
    const std::string command = first_line("/proc/" + number + "/comm");
    return "process " + number + (command.empty() ? "" : " (" + command + ")");
}

bool process_exists(pid_t process)
{
    return process > 0 && (kill(process, 0) == 0 || errno == EPERM);
}

bool process_is_stopped(pid_t process)
{
    char state = 0;
    stat_fields(process) >> state;
    return state == 'T' || state == 't';
}

pid_t process_of(pid_t thread)
{
    std::ifstream status("/proc/" + std::to_string(thread) + "/status");
    pid_t process = 0;
    for (std::string name; status >> name && name != "Tgid:";) {}
    return status >> process ? process : thread;
}

// The 22nd field of the process's stat file, the 20th after its name.
double start_time(pid_t process)
{
    std::istringstream fields = stat_fields(process);
    std::string field;
    for (int i = 0; i < 20; ++i)
        fields >> field;
    return fields ? std::stod(field) / static_cast<double>(sysconf(_SC_CLK_TCK)) : -1;
}

double boot_time_now()
{
    timespec now{};
    clock_gettime(CLOCK_BOOTTIME, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

std::string seconds_text(double seconds)
{
    std::array<char, 32> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%g s", seconds);
    return buffer.data();
}

} // namespace client
