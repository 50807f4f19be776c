// What a port reports unasked, and answers that go wrong on command.
#include "at_modem.h"

namespace
{

using namespace std::chrono_literals;

// The commands that make answers go wrong.
class AtAnswerFaults : public AtModem
{
protected:
    AtAnswerFaults() { commands = {at_front::answer_command(answer_faults)}; }
};

TEST_F(AtAnswerFaults, LoseTheAnswerOfWhatIsDone)
{
    run("answer lose +cpin");
    EXPECT_EQ(answer("AT"), "OK");
    EXPECT_EQ(answer("AT+CPIN=1234"), "");
    EXPECT_EQ(answer("AT+CPIN?"), "+CPIN: READY|OK");
}

TEST_F(AtAnswerFaults, RefuseWhatIsNotDone)
{
    answer("AT+CMEE=1");
    run("answer refuse 13 +CPIN=");
    run("answer refuse 100");
    EXPECT_EQ(answer("AT+CPIN=1234"), "+CME ERROR: 13");
    EXPECT_EQ(answer("AT+CPIN?"), "+CME ERROR: 100");
    EXPECT_EQ(answer("AT+CPIN?"), "+CPIN: SIM PIN|OK");
}

TEST_F(AtAnswerFaults, DelayTheAnswerUnlessItIsCancelled)
{
    run("answer delay 10ms");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(answer("AT"), "OK");
    EXPECT_GE(std::chrono::steady_clock::now() - start, 10ms);
    run("answer delay 60s");
    called_off = true;
    EXPECT_EQ(answer("AT"), "OK");
    EXPECT_LT(std::chrono::steady_clock::now() - start, 50s);
}

TEST_F(AtAnswerFaults, AreReadAsALine)
{
    EXPECT_EQ(error("answer"),
              "7: what happens to an answer is missing; it is one of: lose, delay, refuse");
    EXPECT_EQ(error("answer refuse 1000"),
              "15: the number of +CME ERROR is a whole number from 0 to 999, not '1000'");
}

using AtReports = AtModem;

TEST_F(AtReports, ComeOnlyWhereTheyWereAskedFor)
{
    register_modem();
    run("sms inject +12025550123 hello");
    EXPECT_EQ(reports(), "");
}

TEST_F(AtReports, ContainWhatHasChanged)
{
    answer("AT+CREG=2;+CEREG=1;+CNMI=2,1,0,0,0;+CMER=3,0,0,1;+CGEREP=2");
    EXPECT_EQ(reports(), "");
    register_modem();
    EXPECT_EQ(reports(), "+CREG: 1,\"1A2B\",\"01A2D003\",7|+CEREG: 1|+CIEV: 1,4|+CIEV: 2,1");
    EXPECT_EQ(reports(), "");
    run("handover");
    EXPECT_EQ(reports(), "+CREG: 1,\"1A2B\",\"01A2E107\",7|+CIEV: 1,3");
    run("sms inject +12025550123 hello");
    EXPECT_EQ(reports(), "+CMTI: \"SM\",4");
    ASSERT_EQ(answer_in_time("AT+CGACT=1,3"), "OK");
    reports();
    run("connection drop");
    EXPECT_EQ(reports(), "+CGEV: NW PDN DEACT 3");
    run("sim remove");
    EXPECT_EQ(reports(), "+CREG: 0|+CEREG: 0|+CIEV: 1,0|+CIEV: 2,0|+CIEV: 4,0");
}

} // namespace
