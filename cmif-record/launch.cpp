#include "launch.h"

#include "environment.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <unistd.h>

namespace cmif_record
{
namespace
{

namespace fs = std::filesystem;

constexpr const char *library_name = "libcmif-record.so";
constexpr const char *preload_variable = "LD_PRELOAD";

void preload(const std::string &library)
{
    const char *others = std::getenv(preload_variable);
    const bool any = others && *others != '\0';
    setenv(preload_variable, (any ? library + ":" + others : library).c_str(), 1);
}

} // namespace

// The dynamic linker takes spaces and colons for the end of a path.
std::string library_path()
{
    const fs::path directory = fs::read_symlink("/proc/self/exe").parent_path();
    for (const fs::path &place : {directory, directory / CMIF_RECORD_DIRECTORY}) {
        std::string path = (place / library_name).lexically_normal();
        if (!fs::exists(path))
            continue;
        if (path.find_first_of(" :") != std::string::npos)
            throw std::runtime_error(path + " can't be preloaded: its path has a space or a colon");
        return path;
    }
    throw std::runtime_error(std::string(library_name) + " is neither in " + directory.string() +
                             " nor in its " CMIF_RECORD_DIRECTORY);
}

int become_recorded(const RingPlace &place, const std::string &library,
                    const std::vector<std::string> &command)
{
    preload(library);
    put_into_environment(place);
    std::vector<char *> arguments(command.size() + 1); // with the null pointer at the end
    for (std::size_t i = 0; i < command.size(); ++i)
        arguments[i] = const_cast<char *>(command[i].c_str());
    execvp(arguments[0], arguments.data());
    const int reason = errno;
    std::fprintf(stderr, "cmif-record: cannot run %s: %s\n", arguments[0], std::strerror(reason));
    return reason == ENOENT ? 127 : 126;
}

} // namespace cmif_record
