#include "questions.h"

#include "client/file.h"
#include "hidden_prompt.h"

#include <fcntl.h>
#include <iostream>
#include <unistd.h>

namespace cmifctl
{
namespace
{

using client::File;

std::string ask_one(int terminal, const Question &question)
{
    const std::string label = question.label;
    for (;;) {
        std::string answer = ask_hidden(terminal, label);
        if (!question.twice || answer == ask_hidden(terminal, label + " again"))
            return answer;
        write_to_terminal(terminal, "They differ.\n");
    }
}

// Reads byte by byte: what follows the line belongs to the next reader.
std::string input_line(const char *label)
{
    std::string line;
    char character = 0;
    ssize_t size = 0;
    while ((size = read(STDIN_FILENO, &character, 1)) == 1 && character != '\n')
        line += character;
    if (size != 1 && line.empty())
        throw Failure(Exit::usage, std::string("standard input ends before the ") + label,
                      "Give it as one line.");
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
                      questions.size() == 1
                          ? "Give - and write it to standard input."
                          : "Give - and write them to standard input, one line for each.");
    std::vector<std::string> answers;
    answers.reserve(questions.size());
    for (const Question &question : questions)
        answers.push_back(from_input ? input_line(question.label)
                                     : ask_one(terminal.fd(), question));
    return answers;
}

void confirm(const Context &context, const std::string &consequence)
{
    if (context.arguments.has("yes"))
        return;
    const File terminal = isatty(STDIN_FILENO) == 1 ? open_terminal() : File();
    if (!terminal)
        throw Failure(Exit::usage, consequence, "Give --yes to confirm.");
    write_to_terminal(terminal.fd(), consequence + ". Continue? [y/N] ");
    std::string answer;
    std::getline(std::cin, answer);
    if (answer != "y" && answer != "Y" && answer != "yes")
        throw Failure(Exit::other, "not confirmed; nothing was done");
}

} // namespace cmifctl
