#include "log_files.h"

#include "client/failure.h"
#include "cmifctl/output/terminal.h"
#include "cmifctl/output/terminal_text.h"

#include <deque>
#include <fstream>
#include <sys/stat.h>
#include <utility>

namespace cmifctl
{
namespace
{

using client::Exit;
using client::Failure;

// Reads whole lines, and moves `position` past each. The last line may still be being written.
bool next_line(std::ifstream &file, std::string &line, off_t &position)
{
    if (!std::getline(file, line) || file.eof())
        return false;
    position += static_cast<off_t>(line.size() + 1);
    return true;
}

} // namespace

std::vector<std::string> log_lines(const char *path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw Failure(Exit::no_file, std::string("there is no log ") + path,
                      "'cmifctl log enable' switches it on for programs that start afterwards.");
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    return lines;
}

void LogFollower::print_last(std::size_t count)
{
    find_file();
    std::ifstream file(CMIF_LOG_FILE, std::ios::binary);
    std::deque<std::string> last;
    for (std::string line; next_line(file, line, position_);) {
        last.push_back(std::move(line));
        if (last.size() > count)
            last.pop_front();
    }
    for (const std::string &line : last)
        print(escape_controls(line) + "\n");
}

void LogFollower::print_new()
{
    if (!find_file())
        return;
    std::ifstream file(CMIF_LOG_FILE, std::ios::binary);
    file.seekg(position_);
    for (std::string line; next_line(file, line, position_);)
        print(escape_controls(line) + "\n");
}

// False when there is no log. Another file, or a shorter one, is read from its start.
bool LogFollower::find_file()
{
    struct stat now {
    };
    if (stat(CMIF_LOG_FILE, &now) != 0)
        return false;
    if (now.st_ino != inode_ || now.st_size < position_)
        position_ = 0;
    inode_ = now.st_ino;
    return true;
}

} // namespace cmifctl
