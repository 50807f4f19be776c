#include "hidden_prompt.h"

#include "client/failure.h"
#include "client/signals.h"

#include <array>
#include <csignal>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace cmifctl
{
namespace
{

using client::HeldSignals;

// Switches echo and line editing off, and restores the terminal at the end of its scope. Ctrl-Z is
// blocked meanwhile, since the shell would get a terminal without echo.
class HiddenInput
{
public:
    explicit HiddenInput(int terminal) : terminal_(terminal)
    {
        sigset_t stop;
        sigemptyset(&stop);
        sigaddset(&stop, SIGTSTP);
        sigprocmask(SIG_BLOCK, &stop, &signals_before_);
        tcgetattr(terminal_, &before_);
        termios hidden = before_;
        hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO | ICANON);
        tcsetattr(terminal_, TCSAFLUSH, &hidden);
    }
    ~HiddenInput()
    {
        tcsetattr(terminal_, TCSAFLUSH, &before_);
        sigprocmask(SIG_SETMASK, &signals_before_, nullptr);
    }
    HiddenInput(const HiddenInput &) = delete;
    HiddenInput &operator=(const HiddenInput &) = delete;

    char erase() const { return static_cast<char>(before_.c_cc[VERASE]); }

private:
    int terminal_;
    termios before_{};
    sigset_t signals_before_{};
};

// A newline at the end of the input.
char next_character(int terminal, const HeldSignals &signals)
{
    std::array<pollfd, 2> files{{{signals.fd(), POLLIN, 0}, {terminal, POLLIN, 0}}};
    while (poll(files.data(), files.size(), -1) <= 0) {}
    if (files[0].revents != 0) {
        write_to_terminal(terminal, "\n");
        throw client::Interrupted{signals.received(), "Nothing was sent or changed."};
    }
    constexpr char end_of_input = 4;
    char character = '\n';
    const bool typed = read(terminal, &character, 1) == 1 && character != end_of_input;
    return typed ? character : '\n';
}

} // namespace

void write_to_terminal(int terminal, const std::string &text)
{
    if (write(terminal, text.data(), text.size()) < 0)
        throw client::Failure(client::Exit::other, "the terminal can't be written");
}

std::string ask_hidden(int terminal, const std::string &prompt)
{
    const HeldSignals signals;
    const HiddenInput hidden(terminal);
    write_to_terminal(terminal, prompt + ": ");
    std::string answer;
    for (char c = 0; (c = next_character(terminal, signals)) != '\n' && c != '\r';) {
        if (c != hidden.erase() && c != '\b')
            answer += c;
        else if (!answer.empty())
            answer.pop_back();
    }
    write_to_terminal(terminal, "\n");
    return answer;
}

} // namespace cmifctl
