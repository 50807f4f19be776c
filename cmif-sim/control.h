// What is said between a running router and the programs that give it commands.
//
// The router greets; the program sends a question, "run", "status" or "environment", on a line, and
// after "run" the commands, a line each, and closes its side; the router answers with an exit
// status on a line, and a text.
#ifndef CMIF_SIM_CONTROL_H
#define CMIF_SIM_CONTROL_H

#include <functional>
#include <optional>
#include <string>
#include <sys/types.h>
#include <thread>
#include <vector>

namespace cmif_sim
{

struct Answer {
    int status = 0; // 1 failed, 2 not understood
    std::string text;
};

// Answers questions, one after the other, in a thread of its own.
class ControlServer
{
public:
    using Reply = std::function<Answer(const std::string &question, const std::string &lines)>;

    ControlServer(std::vector<int> listening, Reply reply);
    ~ControlServer(); // when the answer in progress has been sent
    ControlServer(const ControlServer &) = delete;
    ControlServer &operator=(const ControlServer &) = delete;

private:
    void run();
    void serve(int file) const;

    std::vector<int> listening_;
    Reply reply_;
    int end_[2];
    std::thread thread_;
};

// Throws std::exception if the router can't be reached.
Answer ask_box(pid_t box, const std::string &question, const std::string &lines = "");

} // namespace cmif_sim

#endif
