#include "child.h"

#include "call_end.h"
#include "cmif/cmif.h"
#include "signals.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace client
{
namespace
{

struct Pipe {
    File out;
    File in;
};

Pipe make_pipe()
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        throw Failure(Exit::other, "can't create a pipe for the call", "Close some programs.");
    return {File(ends[0]), File(ends[1])};
}

int run_body(const Call &call, Json &output)
{
    const bool logs = call.logs || call.request.channel() == Channel::qmi;
    if (logs)
        shared_debug_lte_mutex_init();
    const int result = call.body(output);
    if (logs)
        shared_debug_lte_mutex_deinit();
    return result;
}

Json failure_message(const Failure &failure)
{
    return {{"status", static_cast<int>(failure.status())},
            {"message", failure.what()},
            {"hint", failure.hint()},
            {"details", failure.details()}};
}

Json result_message(const Call &call)
{
    Json message;
    try {
        Json output;
        message["result"] = run_body(call, output);
        message["output"] = std::move(output);
    } catch (const Failure &failure) {
        message["failure"] = failure_message(failure);
    } catch (const std::exception &error) {
        message["failure"] = failure_message(Failure(Exit::other, error.what()));
    }
    return message;
}

void send_all(int fd, const std::vector<std::uint8_t> &bytes)
{
    for (std::size_t sent = 0; sent < bytes.size();) {
        const ssize_t size = write(fd, bytes.data() + sent, bytes.size() - sent);
        if (size <= 0)
            return;
        sent += static_cast<std::size_t>(size);
    }
}

// In a process group of its own, so that the shell commands of a call can be ended with it. From
// there it may still write to the terminal; it never reads from it, or rm would ask about a
// write-protected marker.
[[noreturn]] void run_child(const Call &call, int answer, int lines, const char *marker,
                            pid_t parent)
{
    setpgid(0, 0);
    end_on_sigterm(marker);
    prctl(PR_SET_PDEATHSIG, SIGTERM); // a killed parent leaves no child waiting for an answer
    if (getppid() != parent)
        _exit(1);
    std::signal(SIGTTOU, SIG_IGN);
    unblock_held_signals();
    const File null(open("/dev/null", O_RDWR | O_CLOEXEC));
    dup2(null.fd(), STDIN_FILENO);
    dup2(lines == -1 ? null.fd() : lines, STDOUT_FILENO);
    if (call.mute_stderr && lines == -1)
        dup2(null.fd(), STDERR_FILENO);
    setvbuf(stdout, nullptr, _IOLBF, BUFSIZ); // the trace of a killed call is complete
    send_all(answer, Json::to_cbor(result_message(call)));
    std::fflush(stdout);
    _exit(0);
}

} // namespace

Child::Child(const Call &call, bool trace, SentRecord &sent, Unanswered *unanswered,
             const char *marker)
{
    Pipe answer = make_pipe();
    Pipe lines;
    if (trace)
        lines = make_pipe();
    std::fflush(nullptr);
    std::signal(SIGCHLD, SIG_DFL);    // ignored, it would hide how the child ended
    prctl(PR_SET_CHILD_SUBREAPER, 1); // the processes of an ended child can be waited for
    const pid_t parent = getpid();
    pid_ = fork();
    if (pid_ == -1)
        throw Failure(Exit::other, "can't start a process for the call", "Close some programs.");
    if (pid_ == 0) {
        sent.watch(codes_of(call), unanswered);
        run_child(call, answer.in.fd(), lines.in.fd(), marker, parent);
    }
    setpgid(pid_, pid_); // here too, whichever process runs first
    answer_ = std::move(answer.out);
    lines_ = std::move(lines.out);
}

Child::~Child()
{
    kill();
}

// Its shell commands end with it, and are waited for: one could still create a marker. The group
// keeps its number while the child is not reaped.
int Child::wait()
{
    int status = 0;
    if (pid_ == -1)
        return status;
    siginfo_t ended{};
    while (waitid(P_PID, static_cast<id_t>(pid_), &ended, WEXITED | WNOWAIT) != 0 &&
           errno == EINTR) {}
    ::kill(-pid_, SIGKILL);
    waitpid(pid_, &status, 0);
    while (waitpid(-pid_, nullptr, 0) > 0) {}
    pid_ = -1;
    return status;
}

bool Child::has_ended() const
{
    siginfo_t end{};
    waitid(P_PID, static_cast<id_t>(pid_), &end, WEXITED | WNOWAIT | WNOHANG);
    return end.si_pid != 0;
}

// A record that passes is counted before the child ends, also on a machine so busy that the child
// gets no processor for a while. A process that does not end in order in good time is killed.
void Child::kill()
{
    if (pid_ == -1)
        return;
    for (int patience_ms = 2000; patience_ms > 0 && !has_ended(); --patience_ms) {
        ::kill(pid_, SIGTERM);
        ::kill(pid_, SIGCONT);
        usleep(1000);
    }
    if (::kill(-pid_, SIGKILL) != 0)
        ::kill(pid_, SIGKILL);
    wait();
}

Answer decode_answer(const std::string &bytes, int wait_status, const Call &call)
{
    const Json message = Json::from_cbor(bytes, true, false);
    if (message.is_discarded() || !message.is_object()) {
        const std::string how = WIFSIGNALED(wait_status)
                                    ? "was ended by signal " + std::to_string(WTERMSIG(wait_status))
                                    : "ended without an answer";
        throw Failure(Exit::other, std::string("the call ") + call.request.name + " " + how,
                      call.crash_hint);
    }
    if (const auto failure = message.find("failure"); failure != message.end())
        throw Failure(static_cast<Exit>((*failure)["status"].get<int>()),
                      (*failure)["message"].get<std::string>(),
                      (*failure)["hint"].get<std::string>(), (*failure)["details"]);
    return {.result = message["result"].get<int>(), .output = message["output"]};
}

} // namespace client
