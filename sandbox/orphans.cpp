#include "orphans.h"

#include "worker.h"

#include <csignal>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <vector>

namespace sandbox
{
namespace
{

// A process's numbers: in the namespace that /proc belongs to first, then in each one below it.
std::vector<pid_t> numbers_of(const std::string &process)
{
    std::ifstream status("/proc/" + process + "/status");
    std::vector<pid_t> numbers;
    for (std::string line; std::getline(status, line);) {
        std::istringstream words(line);
        std::string name;
        if (!(words >> name) || name != "NSpid:")
            continue;
        for (pid_t number = 0; words >> number;)
            numbers.push_back(number);
    }
    return numbers;
}

// By their numbers in this process's own namespace, which /proc need not belong to.
std::vector<pid_t> children()
{
    const std::size_t level = numbers_of("thread-self").size();
    std::ifstream list("/proc/thread-self/children");
    std::vector<pid_t> found;
    for (std::string child; list >> child;) {
        const std::vector<pid_t> numbers = numbers_of(child);
        if (level > 0 && numbers.size() >= level)
            found.push_back(numbers[level - 1]);
    }
    return found;
}

} // namespace

void kill_orphans()
{
    for (;;) {
        bool any = false;
        for (const pid_t child : children())
            any = kill(child, SIGKILL) == 0 || any;
        if (!any)
            return;
        waitpid(any_child, nullptr, 0); // the children of one that ends are in the next list
    }
}

} // namespace sandbox
