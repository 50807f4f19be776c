#include "terminal.h"

#include "client/signals.h"
#include "text.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <iostream>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>

namespace cmifctl
{

namespace
{

bool shows_progress = false;

// The terminal without echo and without its own line editing, as it was again at the end. Ctrl-Z
// waits until then, since the shell would get a terminal without echo.
class SilentTerminal
{
public:
    explicit SilentTerminal(int terminal) : terminal_(terminal)
    {
        sigset_t stop;
        sigemptyset(&stop);
        sigaddset(&stop, SIGTSTP);
        sigprocmask(SIG_BLOCK, &stop, &signals_before_);
        tcgetattr(terminal_, &before_);
        termios silent = before_;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO | ICANON);
        tcsetattr(terminal_, TCSAFLUSH, &silent);
    }
    ~SilentTerminal()
    {
        tcsetattr(terminal_, TCSAFLUSH, &before_);
        sigprocmask(SIG_SETMASK, &signals_before_, nullptr);
    }
    SilentTerminal(const SilentTerminal &) = delete;
    SilentTerminal &operator=(const SilentTerminal &) = delete;

    char erase() const { return static_cast<char>(before_.c_cc[VERASE]); }

private:
    int terminal_;
    termios before_{};
    sigset_t signals_before_{};
};

void write_text(int terminal, const std::string &text)
{
    if (write(terminal, text.data(), text.size()) < 0)
        throw Failure(Exit::other, "the terminal can't be written to");
}

char next_character(int terminal, const HeldSignals &signals)
{
    std::array<pollfd, 2> files{{{signals.descriptor(), POLLIN, 0}, {terminal, POLLIN, 0}}};
    while (poll(files.data(), files.size(), -1) <= 0) {}
    if (files[0].revents != 0) {
        write_text(terminal, "\n");
        throw Interrupted{signals.taken(), "It was still asking; nothing has been changed."};
    }
    constexpr char end_of_input = 4;
    char character = '\n';
    const bool typed = read(terminal, &character, 1) == 1 && character != end_of_input;
    return typed ? character : '\n';
}

std::string ask_silently(int terminal, const std::string &prompt)
{
    const HeldSignals signals;
    const SilentTerminal silent(terminal);
    write_text(terminal, prompt + ": ");
    std::string answer;
    for (char c = 0; (c = next_character(terminal, signals)) != '\n' && c != '\r';) {
        if (c != silent.erase() && c != '\b')
            answer += c;
        else if (!answer.empty())
            answer.pop_back();
    }
    write_text(terminal, "\n");
    return answer;
}

std::string ask_one(int terminal, const Question &question)
{
    for (;;) {
        std::string answer = ask_silently(terminal, question.label);
        if (!question.twice ||
            answer == ask_silently(terminal, std::string(question.label) + " again"))
            return answer;
        write_text(terminal, "They differ.\n");
    }
}

// Byte by byte: what follows the line belongs to whoever reads next.
std::string input_line(const char *label)
{
    std::string line;
    char character = 0;
    ssize_t size = 0;
    while ((size = read(STDIN_FILENO, &character, 1)) == 1 && character != '\n')
        line += character;
    if (size != 1 && line.empty())
        throw Failure(Exit::usage, std::string("standard input ends before the ") + label,
                      "Give one line for each secret.");
    if (line.ends_with('\r'))
        line.pop_back();
    return line;
}

File open_terminal()
{
    return File(open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY));
}

} // namespace

std::vector<std::string> ask_secrets(const std::vector<Question> &questions, bool from_input)
{
    const File terminal = from_input ? File() : open_terminal();
    if (!from_input && !terminal)
        throw Failure(Exit::usage,
                      std::string("there is no terminal to ask for the ") + questions.front().label,
                      "Give - and write it to standard input, a line for each secret.");
    std::vector<std::string> answers;
    answers.reserve(questions.size());
    for (const Question &question : questions)
        answers.push_back(from_input ? input_line(question.label)
                                     : ask_one(terminal.number(), question));
    return answers;
}

void confirm(const Invocation &run, const std::string &consequence)
{
    if (run.arguments.has("yes"))
        return;
    const File terminal = isatty(STDIN_FILENO) == 1 ? open_terminal() : File();
    if (!terminal)
        throw Failure(Exit::usage, consequence, "Give --yes when that is wanted.");
    write_text(terminal.number(), consequence + ". Go on? [y/N] ");
    std::string answer;
    std::getline(std::cin, answer);
    if (answer != "y" && answer != "Y" && answer != "yes")
        throw Failure(Exit::other, "not confirmed, nothing done");
}

void print(const std::string &text)
{
    if (std::fputs(text.c_str(), stdout) < 0 || std::fflush(stdout) != 0)
        throw Unwritable{errno};
}

void note(const std::string &text)
{
    end_progress();
    std::fprintf(stderr, "cmifctl: %s\n", safe(text).c_str());
}

void progress(const std::string &text)
{
    if (isatty(STDERR_FILENO) != 1)
        return;
    std::fprintf(stderr, "\r\033[K%s", safe(text).c_str());
    shows_progress = true;
}

void end_progress()
{
    if (std::exchange(shows_progress, false))
        std::fputs("\r\033[K", stderr);
}

std::size_t output_columns()
{
    winsize size{};
    if (isatty(STDOUT_FILENO) == 1 && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 &&
        size.ws_col > 0)
        return size.ws_col;
    const char *columns = std::getenv("COLUMNS");
    const auto number = whole_number(columns != nullptr ? columns : "");
    return number && *number > 0 ? static_cast<std::size_t>(*number) : 0;
}

bool output_in_colour()
{
    const char *refused = std::getenv("NO_COLOR");
    const char *terminal = std::getenv("TERM");
    return isatty(STDOUT_FILENO) == 1 && (refused == nullptr || *refused == '\0') &&
           terminal != nullptr && std::string(terminal) != "dumb";
}

} // namespace cmifctl
