// The protocol between a running router and the programs that give it commands.
//
// The router greets; the program sends a question on a line, and closes its side; the router
// answers with an exit status on a line, and a text. The questions: "run", followed by the
// commands, a line each; "status"; "status-json", followed by the router's number; "environment".
#ifndef CMIF_SIM_CONTROL_PROTOCOL_H
#define CMIF_SIM_CONTROL_PROTOCOL_H

#include "box_status.h"

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

// Answers questions, one after the other, in a thread of its own. A program that connects and sends
// nothing keeps no other one waiting.
class ControlServer
{
public:
    struct Replies {
        std::function<Answer(const std::string &lines)> run;
        std::function<BoxStatus()> status;
    };

    ControlServer(std::vector<int> listening, Replies replies);
    ~ControlServer(); // when the answer in progress has been sent
    ControlServer(const ControlServer &) = delete;
    ControlServer &operator=(const ControlServer &) = delete;

private:
    class Clients;

    void run();
    Answer answer(const std::string &question, const std::string &lines) const;

    std::vector<int> listening_;
    Replies replies_;
    int end_[2];
    std::thread thread_;
};

// Throws std::exception if the router can't be reached.
Answer ask_box(pid_t box, const std::string &question, const std::string &lines = "");

} // namespace cmif_sim

#endif
