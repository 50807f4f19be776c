// A process that runs as long as an object does.
#ifndef CMIF_SIM_ROUTER_CHILD_PROCESS_H
#define CMIF_SIM_ROUTER_CHILD_PROCESS_H

#include <functional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace cmif_sim
{

// Does `work` and ends with its result. In a process group of its own, so that a terminal's
// interrupt does not reach it. `work` writes one byte to the file that it is given when it is
// ready.
class ChildProcess
{
public:
    explicit ChildProcess(const std::function<int(int ready_fd)> &work); // waits, see is_ready()
    ~ChildProcess(); // asks the process to end, and kills it when it does not
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;

    bool is_ready() const { return ready_; } // or it has failed

private:
    pid_t process_ = -1;
    bool ready_ = false;
};

// Replaces this process by a program, found by PATH; its output goes to the file, "" for this one's
// own. Returns an exit status, after a message, when it can't be run.
int become_program(const std::vector<std::string> &command, const std::string &output);

} // namespace cmif_sim

#endif
