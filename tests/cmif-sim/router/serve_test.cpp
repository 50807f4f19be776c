// cmif-sim serve: the router on the queues of the system, how it stops, and what it refuses.
#include "cmif-sim/router/router.h"
#include "tests/cmif-sim/shell.h"

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;

// Waits until a started server has made its queue.
bool is_served(key_t queue)
{
    for (int tries = 1000; msgget(queue, 0) == -1 && tries > 0; --tries)
        usleep(10'000);
    return msgget(queue, 0) != -1;
}

TEST(Serve, RefusesQueuesThatAreAlreadyServed)
{
    const Outcome at = shell("$S run -- sh -c '\"$S\" serve --no-qmi; echo $?'");
    EXPECT_EQ(at.output, "1\n");
    EXPECT_EQ(at.errors.rfind("cmif-sim: the AT queues are already served by process ", 0), 0U);
    EXPECT_TRUE(contains(at.errors, "; stop it first (/tmp/cmif-sim-at.lock)\n")) << at.errors;
    const Outcome qmi = shell("$S run -- sh -c '\"$S\" serve --no-at; echo $?'");
    EXPECT_EQ(qmi.output, "1\n");
    EXPECT_EQ(qmi.errors.rfind("cmif-sim: the QMI queues are already served by process ", 0), 0U);
    EXPECT_TRUE(contains(qmi.errors, "; stop it first (/tmp/cmif-sim-qmi.lock)\n")) << qmi.errors;
}

TEST(Serve, RefusesAStoreThatIsAlreadyServed)
{
    const Outcome second =
        shell("$S run --no-qmi -- sh -c '\"$S\" serve --no-at; echo $?; echo $CMIF_STORE'");
    EXPECT_EQ(second.output.substr(0, 2), "1\n") << second.output;
    EXPECT_EQ(second.errors.rfind("cmif-sim: the store is already served by process ", 0), 0U)
        << second.errors;
    EXPECT_TRUE(contains(second.errors, "/router.lock)\n")) << second.errors;
}

TEST(Serve, RefusesALockFileThatIsALink)
{
    fs::create_symlink("/tmp/elsewhere", "/tmp/cmif-sim-at.lock");
    const Outcome refused = shell("$S serve");
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.errors,
              "cmif-sim: can't lock /tmp/cmif-sim-at.lock: Too many levels of symbolic links\n");
    EXPECT_FALSE(fs::exists("/tmp/elsewhere"));
    EXPECT_EQ(msgget(at_request_queue, 0), -1);
    fs::remove("/tmp/cmif-sim-at.lock");
}

TEST(Serve, ReportsAStoreThatCanNotBeUsed)
{
    const Outcome refused = shell("CMIF_STORE=/proc/no-store $S serve");
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.errors, "cmif store: /proc/no-store: No such file or directory; set "
                              "CMIF_STORE to a directory that you can write\n");
}

TEST(Serve, LeavesNothingInTheDirectoryThatALinkInPlaceOfTheStoreNames)
{
    fs::create_directory("/tmp/elsewhere");
    fs::create_directory_symlink("/tmp/elsewhere", "/tmp/linked-store");
    const Outcome refused = shell("CMIF_STORE=/tmp/linked-store $S serve");
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(contains(refused.errors, "/tmp/linked-store: Not a directory")) << refused.errors;
    EXPECT_TRUE(fs::is_empty("/tmp/elsewhere"));
    fs::remove("/tmp/linked-store");
    fs::remove("/tmp/elsewhere");
}

// The server goes on without the program that waited for it.
TEST(Serve, ReportsThatNoProcessAwaitsItsReadiness)
{
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t server = fork();
    if (server == 0) {
        close(ready[0]);
        dup2(open("/tmp/errors", O_WRONLY | O_CREAT, 0600), STDERR_FILENO);
        std::exit(cmif_sim::serve({}, ready[1]));
    }
    close(ready[0]);
    close(ready[1]);
    ASSERT_TRUE(is_served(qmi_request_queue));
    for (int tries = 1000; contents("/tmp/errors").empty() && tries > 0; --tries)
        usleep(10'000);
    kill(server, SIGTERM);
    int status = -1;
    EXPECT_EQ(waitpid(server, &status, 0), server);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
    EXPECT_EQ(contents("/tmp/errors"), "cmif-sim: cannot report readiness: Broken pipe\n");
}

TEST(Serve, StopsOnSignals)
{
    for (const int number : {SIGTERM, SIGINT}) {
        const pid_t server = fork();
        if (server == 0) {
            signal(number, SIG_IGN); // as a shell does for a background job
            execl(program, program, "serve", nullptr);
            std::_Exit(1);
        }
        ASSERT_TRUE(is_served(at_request_queue));
        kill(server, number);
        int status = -1;
        waitpid(server, &status, 0);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << number;
        msgctl(msgget(at_request_queue, 0), IPC_RMID, nullptr);
    }
}

} // namespace
