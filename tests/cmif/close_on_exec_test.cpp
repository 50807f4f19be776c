// The library's files: none stays open in a program that the caller executes meanwhile.
#include "cmif/cmif.h"
#include "tests/support/debug_log_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <map>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{
// Path of a file -> the flags of its descriptor just before it was closed.
std::map<std::string, int> closed;

std::string path_of(int descriptor)
{
    char path[256];
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t size = readlink(link.c_str(), path, sizeof path);
    return size > 0 ? std::string(path, static_cast<size_t>(size)) : "";
}

void note(int descriptor)
{
    if (const std::string path = path_of(descriptor); !path.empty())
        closed[path] = fcntl(descriptor, F_GETFD);
}

void expect_close_on_exec(const std::string &path)
{
    ASSERT_EQ(closed.count(path), 1U) << path;
    EXPECT_EQ(closed[path], FD_CLOEXEC) << path;
}
} // namespace

int close(int fd)
{
    note(fd);
    return static_cast<int>(syscall(SYS_close, fd));
}

// The caller's: of a process's own command line an emulator makes one itself.
pid_t getpid() noexcept
{
    return getppid();
}

TEST(CloseOnExec, IsSetForTheProviderList)
{
    write_file(provider_list_path, "(1)");
    closed.clear();
    (void)record([] { return shared_CMIF_GetNetworkProviderList(nullptr); });
    expect_close_on_exec(provider_list_path);
}

TEST(CloseOnExec, IsSetForTheDebugLog)
{
    const DebugLogFile log;
    closed.clear();
    write_log(std::string(200, 'a'));
    expect_close_on_exec(debug_log_path);
}

TEST(CloseOnExec, IsSetForTheReadinessMarker)
{
    write_file(qmi_ready_path, "off");
    closed.clear();
    int status = 0;
    EXPECT_EQ(record([&] { return shared_CMIF_get_sim_status(&status); }).result, 1);
    expect_close_on_exec(qmi_ready_path);
}

TEST(CloseOnExec, IsSetForTheCallersCommandLine)
{
    const std::string command_line = "/proc/" + std::to_string(getpid()) + "/cmdline";
    closed.clear();
    EXPECT_EQ(record([] { return shared_CMIF_get_device_rev_id(nullptr); }).result, 5);
    expect_close_on_exec(command_line);
}
