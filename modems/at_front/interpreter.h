// The AT commands of one port: what is typed, what is answered, what is reported unasked.
#ifndef MODEMS_AT_FRONT_INTERPRETER_H
#define MODEMS_AT_FRONT_INTERPRETER_H

#include "command.h"
#include "command_line.h"
#include "reports.h"

#include <string>

namespace at_front
{

// For one thread at a time.
class Interpreter
{
public:
    // `called_off` tells a command that takes long whether to give up; it may be asked from the
    // thread of run().
    Interpreter(Device &device, std::function<bool()> called_off);

    // What a line, without its end, is answered. A modem that is down answers nothing.
    std::string run(const std::string &line);

    // After a prompt: the text up to Ctrl-Z, or the end of it all by Escape.
    bool takes_text() const { return takes_text_; }
    std::string run_text(const std::string &text);
    std::string give_up_text();

    // What is to be reported of the changes since the last call.
    std::string reports();

    bool echoes() const { return session_.echo; }

private:
    Answer run_request(const Request &request);
    std::string run_requests(const std::vector<Request> &requests);
    std::string carry_out(const std::string &line);

    Device &device_;
    std::function<bool()> called_off_;
    Session session_;
    Situation seen_; // at the last report
    std::string last_line_;
    bool takes_text_ = false;
};

} // namespace at_front

#endif
