#include "box_sockets.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <system_error>
#include <unistd.h>

namespace cmif_sim
{
namespace
{

namespace fs = std::filesystem;

std::string directory()
{
    return "/tmp/cmif-sim-" + std::to_string(geteuid());
}

std::string path_of(pid_t box)
{
    return directory() + "/" + std::to_string(box);
}

// Another user may have taken the name first.
void check_own(const std::string &path, mode_t type)
{
    struct stat found = {};
    if (lstat(path.c_str(), &found) != 0)
        throw std::system_error(errno, std::generic_category(), path);
    if ((found.st_mode & S_IFMT) != type || found.st_uid != geteuid() ||
        (type == S_IFDIR && (found.st_mode & (S_IRWXG | S_IRWXO)) != 0))
        throw std::runtime_error(path + " is not this user's alone");
}

void make_directory()
{
    if (mkdir(directory().c_str(), S_IRWXU) != 0 && errno != EEXIST)
        throw std::system_error(errno, std::generic_category(), directory());
    check_own(directory(), S_IFDIR);
}

sockaddr_un address_of(const std::string &path)
{
    sockaddr_un address{AF_UNIX, {}};
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    return address;
}

int new_socket()
{
    const int file = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (file == -1)
        throw std::system_error(errno, std::generic_category(), "socket");
    return file;
}

int listen_at(const std::string &path)
{
    constexpr int waiting = 16;
    make_directory();
    unlink(path.c_str()); // of an earlier process with this number
    const int file = new_socket();
    const sockaddr_un address = address_of(path);
    if (bind(file, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0 &&
        listen(file, waiting) == 0)
        return file;
    const int reason = errno;
    close(file);
    throw std::system_error(reason, std::generic_category(), path);
}

// -1 with errno.
int connect_at(const std::string &path)
{
    const int file = new_socket();
    const sockaddr_un address = address_of(path);
    if (connect(file, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0)
        return file;
    const int reason = errno;
    close(file);
    errno = reason;
    return -1;
}

bool is_alive(const std::string &path)
{
    const int file = connect_at(path);
    if (file == -1 && errno == ECONNREFUSED)
        unlink(path.c_str());
    close(file);
    return file != -1;
}

std::string list_of(const std::vector<pid_t> &boxes)
{
    std::string list;
    for (const pid_t box : boxes)
        list += (list.empty() ? "" : ", ") + std::to_string(box);
    return list;
}

} // namespace

BoxSocket::BoxSocket() : path_(path_of(getpid()))
{
    try {
        file_ = listen_at(path_);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "cmif-sim: this router takes no commands: %s\n", error.what());
    }
}

BoxSocket::~BoxSocket()
{
    if (file_ == -1)
        return;
    close(file_);
    unlink(path_.c_str());
}

std::vector<pid_t> find_boxes()
{
    std::vector<pid_t> boxes;
    if (access(directory().c_str(), F_OK) != 0)
        return boxes;
    check_own(directory(), S_IFDIR);
    std::error_code none;
    for (const fs::directory_entry &entry : fs::directory_iterator(directory(), none)) {
        const std::string name = entry.path().filename();
        pid_t box = 0;
        const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), box);
        if (error == std::errc() && *end == '\0' && is_alive(entry.path()))
            boxes.push_back(box);
    }
    std::sort(boxes.begin(), boxes.end());
    return boxes;
}

pid_t choose_box(std::optional<pid_t> given)
{
    const std::vector<pid_t> boxes = find_boxes();
    if (boxes.empty())
        throw std::runtime_error("no simulated router of this user is running here; start one with "
                                 "cmif-sim run or cmif-sim serve");
    if (given && std::find(boxes.begin(), boxes.end(), *given) == boxes.end())
        throw std::runtime_error("no router with the number " + std::to_string(*given) +
                                 "; there are: " + list_of(boxes));
    if (!given && boxes.size() > 1)
        throw std::runtime_error("several routers are running: choose one with --box, of: " +
                                 list_of(boxes));
    return given.value_or(boxes.front());
}

int connect_to_box(pid_t box)
{
    check_own(directory(), S_IFDIR);
    check_own(path_of(box), S_IFSOCK);
    const int file = connect_at(path_of(box));
    if (file == -1)
        throw std::system_error(errno, std::generic_category(), path_of(box));
    return file;
}

} // namespace cmif_sim
