// The routers of this user that can be given commands: a socket for each, named by a process
// number, in a directory that only this user can use.
#ifndef CMIF_SIM_CONTROL_BOX_SOCKETS_H
#define CMIF_SIM_CONTROL_BOX_SOCKETS_H

#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace cmif_sim
{

// The socket of this process, listening. A process in a box sees the directory of that box's /tmp.
class BoxSocket
{
public:
    BoxSocket();  // without a socket, and a line on standard error, if that can't be made
    ~BoxSocket(); // closes it, and removes its name
    BoxSocket(const BoxSocket &) = delete;
    BoxSocket &operator=(const BoxSocket &) = delete;

    int file() const { return file_; } // -1 without one
    const std::string &path() const { return path_; }

private:
    std::string path_;
    int file_ = -1;
};

// In ascending order. Removes sockets that were left behind. Throws std::exception if the directory
// is another user's.
std::vector<pid_t> find_boxes();

// The box that is meant: the given one, else the only one. Throws std::runtime_error if there is
// none, or more than one.
pid_t choose_box(std::optional<pid_t> given);

// A connection to a box, to be closed by the caller. Throws std::exception.
int connect_to_box(pid_t box);

} // namespace cmif_sim

#endif
