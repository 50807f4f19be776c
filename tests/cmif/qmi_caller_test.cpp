// The caller trace: the calling process, by its command line.
#include "cmif/cmif.h"
#include "tests/support/child.h"
#include "tests/support/files.h"
#include "tests/support/qmi_call.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <sys/mount.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{
std::optional<pid_t> other_id; // in place of this process's own
} // namespace

pid_t getpid() noexcept
{
    return other_id.value_or(static_cast<pid_t>(syscall(SYS_getpid)));
}

namespace
{
const std::string api = "shared_CMIF_get_device_rev_id";

// Records its caller, and ends there.
int call()
{
    return shared_CMIF_get_device_rev_id(nullptr);
}

class QmiCaller : public QmiTest
{
};

// A file in place of the caller's command line; needs the rights of the namespace's root. The
// caller is the parent of this process: of a process's own command line an emulator makes one
// itself.
class CommandLine
{
public:
    explicit CommandLine(const std::string &bytes)
        : path_("/proc/" + std::to_string(getppid()) + "/cmdline")
    {
        write_file("/tmp/cmdline", bytes);
        replaced_ = mount("/tmp/cmdline", path_.c_str(), nullptr, MS_BIND, nullptr) == 0;
        other_id = getppid();
    }
    ~CommandLine()
    {
        other_id.reset();
        if (replaced_)
            umount(path_.c_str());
    }
    CommandLine(const CommandLine &) = delete;
    CommandLine &operator=(const CommandLine &) = delete;

    [[nodiscard]] bool replaced() const { return replaced_; }

private:
    std::string path_;
    bool replaced_ = false;
};

struct Row {
    std::string command_line, name;
};

std::string with_nul(const std::string &text)
{
    return text + '\0';
}

const std::string long_name = "abcdefghijklmnopqrstuvwxyz01234567890123"; // 40 characters

const Row rows[] = {
    {with_nul("web_server"), "web_server"},
    {with_nul("web_server") + with_nul("--port") + with_nul("80"), "web_server"},
    {"web_server", "web_server"},
    {"web_server\n", "web_server"},
    {"\n", ""},
    {"", ""},
    {with_nul(""), ""},
    {with_nul("web_server\n"), "web_server\n"}, // the last byte is the NUL
    {with_nul(long_name), long_name.substr(0, 32)},
    {long_name.substr(0, 31) + "\n" + with_nul("more"), long_name.substr(0, 31)},
    {long_name.substr(0, 32), long_name.substr(0, 32)},
    {long_name.substr(0, 32) + "\n", long_name.substr(0, 32)}, // the newline is never read
    {with_nul(long_name.substr(0, 31)), long_name.substr(0, 31)},
    {with_nul("sh") + with_nul("-c") + std::string(26, 'x') + "\n", "sh"},
};

TEST_F(QmiCaller, IsPrintedAndLogged)
{
    expect_call(call, 5, {caller(api)});
}

TEST_F(QmiCaller, IsOnlyLoggedWithTheTraceOff)
{
    store::set("debug_qmi_cmif", "0");
    expect_call(call, 5, {caller(api)});
}

TEST_F(QmiCaller, IsOnlyPrintedWithTheLogOff)
{
    log_off();
    expect_call(call, 5, {caller(api)});
    EXPECT_FALSE(file_exists(debug_log_path));
}

TEST_F(QmiCaller, IsTheFirstArgumentOfTheCommandLine)
{
    for (const Row &row : rows) {
        const CommandLine line(row.command_line);
        if (!line.replaced())
            GTEST_SKIP() << "no namespaces on this system: a command line can't be replaced";
        const std::string text = "[" + api + "] called by pid(" + std::to_string(getpid()) +
                                 ") - process name[" + row.name + "]\n";
        EXPECT_EQ(record(call).output, "[CMIF-QMI] - " + text + "\n");
        const std::string log = DebugLogFile::text();
        const std::string logged = std::string("[CMIF-QMI][") + debug_log_stamp + "]" + text;
        ASSERT_GE(log.size(), logged.size());
        EXPECT_EQ(log.substr(log.size() - logged.size()), logged);
    }
}

TEST_F(QmiCaller, IsNotRecordedWithoutAProcessId)
{
    other_id = 0;
    expect_call(call, 5, {});
    other_id.reset();
}

TEST_F(QmiCaller, IsRecordedByTheseCallsOnly)
{
    EXPECT_EQ(shared_CMIF_get_sim_status(nullptr), 5);
    std::filesystem::remove(qmi_ready_path);
    const Recorded run = record([] {
        for (const QmiRequest &request : qmi_requests)
            (void)request.call();
        return 0;
    });
    for (const QmiRequest &request : qmi_requests) {
        const bool silent = request.code == 6 || request.code == 8;
        EXPECT_EQ(run.output.find("[" + request.name + "] called by") == std::string::npos, silent);
    }
}

constexpr char second_life[] = "CMIF_TEST_SECOND_LIFE";

// This program again, under another name.
TEST_F(QmiCaller, ALongNameOfARealProcessIsCut)
{
    if (getenv(second_life) != nullptr) {
        call();
        return;
    }
    Child child([] {
        setenv(second_life, "1", 1);
        execl("/proc/self/exe", long_name.c_str(),
              "--gtest_filter=QmiCaller.ALongNameOfARealProcessIsCut", nullptr);
        _exit(errno == ENOEXEC ? 127 : 126);
    });
    const int status = child.wait();
    if (status == 127)
        GTEST_SKIP() << "the caller's name: an emulated process can't be started under another";
    EXPECT_EQ(status, 0);
    EXPECT_NE(child.output().find("process name[" + long_name.substr(0, 32) + "]\n\n"),
              std::string::npos)
        << child.output();
}
} // namespace
