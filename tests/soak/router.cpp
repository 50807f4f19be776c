#include "router.h"

#include "cmif/cmif.h"
#include "soak.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <sys/msg.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace soak
{
namespace
{

namespace fs = std::filesystem;

[[noreturn]] void give_up(const char *why)
{
    std::fprintf(stderr, "%s\n", why);
    std::exit(1);
}

fs::path folder_of(pid_t process)
{
    return "/proc/" + std::to_string(process);
}

// The process, its children and theirs: each daemon is a process of its own.
std::vector<pid_t> family_of(pid_t process)
{
    std::vector<pid_t> family{process};
    for (std::size_t i = 0; i < family.size(); ++i) {
        std::ifstream children(folder_of(family[i]) / "task" / std::to_string(family[i]) /
                               "children");
        for (pid_t child = 0; children >> child;)
            family.push_back(child);
    }
    return family;
}

int private_memory(pid_t process)
{
    constexpr const char *name = "RssAnon:";
    std::ifstream status(folder_of(process) / "status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(name))
            return std::atoi(line.c_str() + std::char_traits<char>::length(name));
    return 0;
}

int descriptors(pid_t process)
{
    const fs::directory_iterator all(folder_of(process) / "fd");
    return static_cast<int>(std::distance(begin(all), end(all)));
}

} // namespace

// A killed router leaves its marker, and the queues stay in any case.
Router::Router()
{
    constexpr int time_limit_ms = 10'000;
    fs::remove(CMIF_QMI_READY_FILE);
    process_ = start([] {
        execlp("cmif-sim", "cmif-sim", "serve", "--pace", "0", nullptr);
        std::perror("cmif-sim");
        _exit(1);
    });
    for (int waited = 0; !fs::exists(CMIF_QMI_READY_FILE) || msgget(CMIF_AT_REPLY_KEY, 0) == -1;
         ++waited) {
        if (waited == time_limit_ms)
            give_up("the router does not start");
        pause_ms(1);
    }
}

Router::~Router()
{
    int state = 0;
    if (process_ == -1)
        return;
    ::kill(process_, SIGTERM);
    waitpid(process_, &state, 0);
    if (state != 0)
        give_up("the router did not end by itself");
}

void Router::kill()
{
    end(process_);
    process_ = -1;
}

Router::Size Router::size() const
{
    Size all;
    for (const pid_t process : family_of(process_)) {
        all.kilobytes += private_memory(process);
        all.descriptors += descriptors(process);
    }
    return all;
}

} // namespace soak
