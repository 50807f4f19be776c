// The program cmif-record in front of a daemon that knows nothing of it.
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

struct Outcome {
    int status;
    std::string output, errors;
};

std::string contents(const char *path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Runs a line of the shell; $R in it is cmif-record, $D the daemon.
Outcome shell(const std::string &line)
{
    setenv("R", CMIF_RECORD, 1);
    setenv("D", RECORDED_DAEMON, 1);
    setenv("CMIF_STORE", "/tmp/recorded-store", 1);
    const int status = std::system(("{ " + line + "; } >/tmp/output 2>/tmp/errors").c_str());
    return {WEXITSTATUS(status), contents("/tmp/output"), contents("/tmp/errors")};
}

// How many lines of each type there are; without one that is being written.
std::map<std::string, int> counts(const char *path)
{
    std::map<std::string, int> found;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line) && !file.eof();)
        ++found[nlohmann::json::parse(line).value("type", "head")];
    return found;
}

using Counts = std::map<std::string, int>;

TEST(Program, RecordsADaemonAndLeavesItAsItIs)
{
    const Outcome run = shell("$R /tmp/r.jsonl -- $D 500");
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.output, "served\n");
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(
        counts("/tmp/r.jsonl"),
        (Counts{{"head", 1}, {"process", 1}, {"request", 1000}, {"reply", 1000}, {"set", 1}}));
}

TEST(Program, RecordsTheDaemonsOfAScript)
{
    EXPECT_EQ(shell("$R /tmp/r.jsonl -- sh -c '$D & $D; wait'").status, 0);
    const Counts found = counts("/tmp/r.jsonl");
    EXPECT_EQ(found.at("process"), 3);
    EXPECT_EQ(found.at("set"), 2);
}

// The lines as soon as there are so many. A killed daemon can't wait for them.
Counts counts_of_all(const char *path, int lines)
{
    Counts found;
    for (int tries = 0, all = 0; all < lines && tries < 500; ++tries) {
        usleep(10'000);
        found = counts(path);
        all = 0;
        for (const auto &[type, count] : found)
            all += count;
    }
    return found;
}

TEST(Program, LosesNothingOfADaemonThatIsKilled)
{
    const Outcome run = shell("$R /tmp/r.jsonl -- $D 500 kill");
    EXPECT_EQ(run.status, 128 + SIGKILL) << run.errors;
    EXPECT_EQ(
        counts_of_all("/tmp/r.jsonl", 2003),
        (Counts{{"head", 1}, {"process", 1}, {"request", 1000}, {"reply", 1000}, {"set", 1}}));
}

// Programs that a daemon starts without its files are recorded all the same.
TEST(Program, EndsWithAllThatAKilledChildHasDone)
{
    const Counts all = {{"head", 1}, {"process", 1}, {"request", 2}, {"reply", 2}, {"set", 1}};
    for (int run = 0; run < 20; ++run) { // what is written late is not always missing
        EXPECT_EQ(shell("ASAN_OPTIONS=detect_leaks=0 $R /tmp/r.jsonl -- $D 1 child").status, 0);
        EXPECT_EQ(counts("/tmp/r.jsonl"), all);
    }
}

TEST(Program, RecordsAChildWithoutTheDaemonsFiles)
{
    const Outcome run = shell("$R /tmp/r.jsonl -- bash -c 'for f in /proc/$$/fd/*; do f=${f##*/}; "
                              "[ $f -lt 3 ] || eval \"exec $f>&-\"; done; $D; ls /proc/self/fd'");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.output, "served\n0\n1\n2\n3\n");
    EXPECT_EQ(counts("/tmp/r.jsonl").at("set"), 1);
}

TEST(Program, RecordsWhereFewFilesMayBeOpen)
{
    EXPECT_EQ(shell("ulimit -n 30; $R /tmp/r.jsonl -- $D").status, 3);
    EXPECT_EQ(counts("/tmp/r.jsonl").at("set"), 1);
}

// The writer ends after the last process that is recorded, and holds nothing of the daemon's.
TEST(Program, LeavesNoProcessRunning)
{
    EXPECT_EQ(shell("$R /tmp/r.jsonl -- $D | cat").output, "served\n");
    const Outcome rest =
        shell("i=0; while pgrep -x record-writer && [ $i -lt 500 ]; do sleep 0.01; i=$((i+1)); "
              "done >&2; pgrep -x record-writer");
    EXPECT_EQ(rest.output, "");
}

TEST(Program, IsPreloadedBeforeOtherLibraries)
{
    const Outcome run = shell("LD_PRELOAD=libm.so.6 $R /tmp/r.jsonl -- sh -c 'echo $LD_PRELOAD'");
    EXPECT_TRUE(run.output.ends_with("/libcmif-record.so:libm.so.6\n")) << run.output;
}

TEST(Program, OverwritesAnEarlierRecording)
{
    ASSERT_EQ(shell("$R /tmp/r.jsonl -- $D").status, 3);
    ASSERT_EQ(shell("$R /tmp/r.jsonl -- $D").status, 3);
    EXPECT_EQ(counts("/tmp/r.jsonl").at("head"), 1);
}

TEST(Program, ReportsWhatItCannotDo)
{
    EXPECT_EQ(shell("$R /tmp/r.jsonl -- /no/such/daemon").status, 127);
    const Outcome directory = shell("$R /tmp/r.jsonl -- /tmp");
    EXPECT_EQ(directory.status, 126);
    EXPECT_EQ(directory.errors, "cmif-record: cannot run /tmp: Permission denied\n");
    const Outcome unwritten = shell("$R /no/such/file -- true");
    EXPECT_EQ(unwritten.status, 1);
    EXPECT_EQ(unwritten.errors, "cmif-record: /no/such/file: No such file or directory\n");
    EXPECT_EQ(shell("$R /tmp -- $D").errors,
              "cmif-record: /tmp is a directory: name the file to write in it, "
              "/tmp/trouble.jsonl\n");
    const Outcome full = shell("$R /dev/full -- true");
    EXPECT_EQ(full.status, 1);
    EXPECT_EQ(full.errors, "cmif-record: /dev/full: No space left on device\n");
}

TEST(Program, RefusesALineThatIsWrong)
{
    const std::pair<const char *, const char *> misuses[] = {
        {"$R", "Usage: cmif-record [OPTIONS] FILE"},
        {"$R --bogus", "cmif-record: unknown option '--bogus' for 'cmif-record'\n"},
        {"$R -- true", "cmif-record: missing FILE for 'cmif-record'\n"},
        {"$R /tmp/none.jsonl", "cmif-record: missing DAEMON for 'cmif-record'\n"},
        {"$R /tmp/none.jsonl true", "cmif-record: unexpected argument 'true' for 'cmif-record'\n"},
    };
    for (const auto &[line, error] : misuses) {
        const Outcome refused = shell(line);
        EXPECT_EQ(refused.status, 2) << line;
        EXPECT_TRUE(refused.errors.starts_with(error)) << line << refused.errors;
    }
    EXPECT_FALSE(std::filesystem::exists("/tmp/none.jsonl"));
}

TEST(Program, HasHelpManualAndCompletion)
{
    const Outcome help = shell("$R --help");
    EXPECT_EQ(help.status, 0);
    EXPECT_TRUE(help.output.starts_with(
        "Usage: cmif-record [OPTIONS] FILE [--with-secrets] [-- DAEMON [ARGUMENT...]]\n"));
    EXPECT_NE(help.output.find("\n  --with-secrets  "), std::string::npos);
    EXPECT_NE(help.output.find("\n  manual "), std::string::npos);
    EXPECT_NE(shell("$R manual").output.find(".SH EXAMPLES"), std::string::npos);
    EXPECT_EQ(shell("$R complete -- --wi").output,
              "--with-secrets\tkeep secrets and identities as they are\n");
    EXPECT_EQ(shell("$R complete -- man").output, "manual\tprint the manual page, for man -l -\n");
    EXPECT_EQ(shell("$R complete -- a.jsonl man").output, "");
    EXPECT_NE(shell("$R completion zsh").output.find("compdef"), std::string::npos);
    EXPECT_EQ(shell("$R --version").output.rfind("cmif-record 1.", 0), 0U);
}

} // namespace
