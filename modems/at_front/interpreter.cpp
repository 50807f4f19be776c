#include "interpreter.h"

#include <cctype>

namespace at_front
{
namespace
{

bool is_command_line(const std::string &line)
{
    const auto upper = [&](std::size_t i) {
        return std::toupper(static_cast<unsigned char>(line[i]));
    };
    return line.size() >= 2 && upper(0) == 'A' && upper(1) == 'T';
}

// "\n" divides the lines of an answer that has several.
Answer test_answer(std::string_view name, std::string_view text)
{
    Answer answer;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        answer.lines.push_back(std::string(name) + ": " + std::string(text.substr(0, end)));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return answer;
}

Handler handler_of(const Command &command, Form form)
{
    switch (form) {
    case Form::test:
        return command.run_test;
    case Form::read:
        return command.read;
    case Form::set:
        return command.set;
    case Form::execute:
        return command.execute;
    }
    return nullptr;
}

} // namespace

Interpreter::Interpreter(Device &device, std::function<bool()> called_off)
    : device_(device), called_off_(std::move(called_off)), seen_(situation_of(device))
{
}

Answer Interpreter::run_request(const Request &request)
{
    const Command *command = find_command(request.name);
    if (!command)
        return error;
    const Handler handler = handler_of(*command, request.form);
    if (!handler && request.form == Form::test && command->test)
        return test_answer(request.name, command->test);
    const auto parameters = Parameters::parse(request.arguments);
    if (!handler || !parameters)
        return error;
    Call call{device_, session_, *parameters, called_off_};
    return handler(call);
}

// The first command that fails ends the line.
std::string Interpreter::run_requests(const std::vector<Request> &requests)
{
    std::string text;
    for (const Request &request : requests) {
        const Answer answer = run_request(request);
        text += text_of(answer.lines, session_);
        takes_text_ = answer.ending == Ending::prompt;
        if (answer.ending != Ending::ok)
            return text + text_of_ending(answer, session_);
    }
    return text + text_of_ending(ok, session_);
}

std::string Interpreter::run(const std::string &line)
{
    if (line == "A/" || line == "a/")
        return last_line_.empty() ? "" : run(std::string(last_line_));
    if (!is_command_line(line))
        return "";
    last_line_ = line;
    if (device_.modem().refresh(daemons::StatusPart::revision) != CmeError::ok) {
        session_ = {}; // it has forgotten everything when it is back
        return "";
    }
    const std::optional<AnswerFault> fault = device_.answer_faults().take(line);
    if (!fault)
        return carry_out(line);
    if (fault->kind == AnswerFault::Kind::refuse)
        return text_of_ending({{}, Ending::cme, fault->error}, session_);
    std::string text = carry_out(line);
    if (fault->kind == AnswerFault::Kind::lose)
        return "";
    device_.wait_until([] { return false; }, device_.modem().scale().scaled(fault->delay),
                       called_off_);
    return text;
}

std::string Interpreter::carry_out(const std::string &line)
{
    const auto requests = parse_line(line.substr(2));
    return requests ? run_requests(*requests) : text_of_ending(error, session_);
}

std::string Interpreter::run_text(const std::string &text)
{
    takes_text_ = false;
    Call call{device_, session_, {}, called_off_};
    const Answer answer = send_message(call, text);
    return text_of(answer.lines, session_) + text_of_ending(answer, session_);
}

std::string Interpreter::give_up_text()
{
    takes_text_ = false;
    return text_of_ending(ok, session_);
}

std::string Interpreter::reports()
{
    Situation now = situation_of(device_);
    std::string text;
    for (const std::string &each : reports_between(seen_, now, session_))
        text += text_of_report(each);
    seen_ = std::move(now);
    return text;
}

} // namespace at_front
