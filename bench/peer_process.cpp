#include "peer_process.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench
{
namespace
{

// posix_spawn: unlike a fork, it costs the same however large this process is.
pid_t start(const std::string &program, const char *mode, int input, int output)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    std::string name = program, argument = mode;
    char *arguments[] = {name.data(), argument.data(), nullptr};
    pid_t child = -1;
    if (posix_spawn(&child, name.c_str(), &actions, nullptr, arguments, environ) != 0)
        child = -1;
    posix_spawn_file_actions_destroy(&actions);
    return child;
}

} // namespace

PeerProcess::PeerProcess(const std::string &program, const char *mode)
{
    int input[2], output[2];
    if (pipe2(input, O_CLOEXEC) != 0 || pipe2(output, O_CLOEXEC) != 0)
        std::abort();
    child_ = start(program, mode, input[0], output[1]);
    close(input[0]);
    close(output[1]);
    to_ = fdopen(input[1], "w");
    from_ = fdopen(output[0], "r");
}

PeerProcess::~PeerProcess()
{
    if (to_ != nullptr)
        std::fclose(to_);
    if (from_ != nullptr)
        std::fclose(from_);
    if (child_ == -1)
        return;
    kill(child_, SIGKILL);
    waitpid(child_, nullptr, 0);
}

void PeerProcess::write(int number)
{
    std::fprintf(to_, "%d\n", number);
    std::fflush(to_);
}

std::optional<double> PeerProcess::read()
{
    double number = 0;
    if (std::fscanf(from_, "%lf", &number) != 1)
        return std::nullopt;
    return number;
}

std::optional<double> run_once(const std::string &program)
{
    const int null = open("/dev/null", O_RDWR | O_CLOEXEC);
    const auto begin = std::chrono::steady_clock::now();
    int status = -1;
    const pid_t child = start(program, "once", null, null);
    if (child != -1)
        waitpid(child, &status, 0);
    const std::chrono::duration<double, std::nano> spent = std::chrono::steady_clock::now() - begin;
    close(null);
    if (status != 0)
        return std::nullopt;
    return spent.count();
}

} // namespace bench
