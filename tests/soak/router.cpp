#include "router.h"

#include "cmif/cmif.h"
#include "soak.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/msg.h>
#include <sys/wait.h>
#include <unistd.h>

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
    const std::string folder = "/proc/" + std::to_string(process_);
    Size size;
    std::ifstream status(folder + "/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("RssAnon:"))
            size.kilobytes = std::atoi(line.c_str() + sizeof "RssAnon:");
    for ([[maybe_unused]] const auto &entry : fs::directory_iterator(folder + "/fd"))
        ++size.descriptors;
    return size;
}

} // namespace soak
