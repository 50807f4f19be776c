// Scenarios beside a program: each example runs to its end, the faults in them show as their
// comments say, and with a manual clock the same scenario gives the same results each time.
#include "tests/cmif-sim/shell.h"

namespace
{

namespace fs = std::filesystem;

// Runs a script of the shell beside the example; $F is the file.
Outcome beside(const std::string &example, const std::string &options, const std::string &script)
{
    setenv("F", (fs::path(EXAMPLE_SCENARIOS) / (example + ".cmif")).c_str(), 1);
    setenv("SCRIPT", script.c_str(), 1);
    return shell("$S run --scenario \"$F\" " + options + " -- sh -c \"$SCRIPT\"");
}

TEST(ScenarioRuns, EveryExampleRunsToItsEnd)
{
    int count = 0;
    for (const fs::directory_entry &entry : fs::directory_iterator(EXAMPLE_SCENARIOS)) {
        if (entry.path().extension() != ".cmif")
            continue;
        ++count;
        const std::string name = entry.path().stem();
        const Outcome ended =
            beside(name, "--clock manual", "cmif-sim ctl advance 20min && cmif-sim status");
        EXPECT_EQ(ended.status, 0) << name << ended.errors;
        EXPECT_EQ(ended.errors, "") << name;
        EXPECT_FALSE(contains(ended.output, "step     at ")) << name << ended.output;
    }
    EXPECT_EQ(count, 12);
}

TEST(ScenarioRuns, AStaleReplyIsNotTakenForTheAnswer)
{
    const Outcome calls = beside("stale-reply", "",
                                 "echo 0000 | cmifctl sim enter-pin -; echo exit $?; "
                                 "echo 1234 | cmifctl sim enter-pin -; echo exit $?");
    EXPECT_TRUE(contains(calls.output, "exit 4\n")) << calls.output << calls.errors;
    EXPECT_TRUE(contains(calls.output, "PIN is accepted.\nexit 0\n")) << calls.output;
}

TEST(ScenarioRuns, AFrozenDaemonAnswersWhenItGoesOn)
{
    const Outcome calls =
        beside("frozen-daemon", "--clock manual",
               "cmifctl --timeout 1 sim retries; echo exit $?; cmif-sim ctl advance 30s; "
               "cmifctl --timeout 20 sim retries; echo exit $?");
    EXPECT_TRUE(contains(calls.output, "exit 3\n")) << calls.output << calls.errors;
    EXPECT_TRUE(contains(calls.output, "exit 0\n")) << calls.output << calls.errors;
}

TEST(ScenarioRuns, ALateReplyIsNotTakenForTheNextAnswer)
{
    const Outcome calls = beside("late-answers", "--pace 0.1",
                                 "cmifctl --timeout 0.3 sim retries; echo exit $?; "
                                 "cmifctl --timeout 20 sim retries; echo exit $?");
    EXPECT_TRUE(contains(calls.output, "exit 3\n")) << calls.output << calls.errors;
    EXPECT_TRUE(contains(calls.output, "pin1: 3")) << calls.output << calls.errors;
}

TEST(ScenarioRuns, ADaemonThatDiesInASearchComesBack)
{
    const Outcome calls = beside("daemon-crash-in-search", "--pace 0.1",
                                 "cmifctl --timeout 2 network scan; echo exit $?; "
                                 "cmifctl --timeout 20 network scan; echo exit $?");
    EXPECT_TRUE(contains(calls.output, "exit 3\n")) << calls.output << calls.errors;
    EXPECT_TRUE(contains(calls.output, "Test Network")) << calls.output << calls.errors;
    EXPECT_TRUE(contains(calls.output, "exit 0\n")) << calls.output;
}

// What is printed, each record and each key, and the recording.
TEST(ScenarioRuns, RepeatByteForByte)
{
    std::string first;
    for (int i = 0; i < 4; ++i) {
        const Outcome run = shell(
            "cd " REPEATED_SCENARIO " && $S run --clock manual --verbose --record /tmp/r.jsonl "
            "--scenario scenario.cmif -- sh -c \"cd /tmp; $(cat session.sh)\"");
        EXPECT_EQ(run.status, 0) << run.errors;
        const std::string all = run.output + run.errors + contents("/tmp/r.jsonl");
        EXPECT_TRUE(contains(all, "lte_sim_status=NOT INSERTED")) << all;
        EXPECT_TRUE(contains(all, "AT <- 24 shared_CMIF_set_ModeManualSearch ret_code=0")) << all;
        EXPECT_TRUE(contains(all, "no handover: the modem is not registered")) << all;
        EXPECT_TRUE(contains(all, "\"started\":\"1970-01-01T00:00:00.000Z\"")) << all;
        EXPECT_TRUE(contains(all, "{\"time\":43.000000,\"process\":1,")) << all;
        if (first.empty())
            first = all;
        ASSERT_EQ(all, first) << i;
    }
}

// Another seed gives other signal values, and other stand-ins.
TEST(ScenarioRuns, DifferByTheirSeeds)
{
    std::string recordings[2];
    for (const char *seed : {"1", "2"}) {
        setenv("SEED", seed, 1);
        const Outcome run = shell("cd /tmp && $S run --clock manual --seed $SEED --record r.jsonl "
                                  "--state registered -- cmif-sim ctl advance 10s");
        EXPECT_EQ(run.status, 0) << run.errors;
        recordings[*seed - '1'] = contents("/tmp/r.jsonl");
    }
    EXPECT_NE(recordings[0], recordings[1]);
    EXPECT_TRUE(contains(recordings[0], "lte_mobile_imsi"));
    EXPECT_FALSE(contains(recordings[0], "001010123456789"));
}

TEST(ScenarioRuns, AWrongScenarioStartsNothing)
{
    std::ofstream("/tmp/bad.cmif") << "state registered\n  sgnal auto\nat 5 handover\n";
    const Outcome run = shell("$S run --scenario /tmp/bad.cmif -- touch /tmp/started");
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(run.errors.starts_with(
        "/tmp/bad.cmif:2:3: unknown command 'sgnal'; it is one of: signal, "))
        << run.errors;
    EXPECT_TRUE(contains(run.errors, "/tmp/bad.cmif:3:4: the time is a number with its unit"))
        << run.errors;
    EXPECT_FALSE(fs::exists("/tmp/started"));
}

} // namespace
