// AT commands and what they are answered.
#include "at_modem.h"

namespace
{

using namespace std::chrono_literals;

struct Row {
    const char *line, *answer;
};

using AtCommands = AtModem;

#define EXPECT_ANSWERS(rows)                                                                       \
    for (const Row &row : rows)                                                                    \
    EXPECT_EQ(answer(row.line), row.answer) << row.line

TEST_F(AtCommands, WithALockedSim)
{
    constexpr Row rows[] = {
        {"AT", "OK"},
        {"at", "OK"},
        {"AT+CPIN?", "+CPIN: SIM PIN|OK"},
        {"AT+CIMI", "ERROR"},
        {"AT+CMEE=1", "OK"},
        {"AT+CIMI", "+CME ERROR: 11"},
        {"AT+CMEE=2", "OK"},
        {"AT+CIMI", "+CME ERROR: SIM PIN required"},
        {"AT+COPS=0", "+CME ERROR: SIM PIN required"},
        {"AT+CMGL=4", "+CMS ERROR: 311"},
        {"AT+CCID", "+CCID: 8900101123456789016|OK"},
        {"AT+CRSM=176,12258,0,0,10", "+CRSM: 144,0,\"980001113254769810F6\"|OK"},
        {"AT+CRSM=176,28589,0,0,4", "+CRSM: 144,0,\"00000002\"|OK"},
        {"AT+CRSM=176,28423,0,0,9", "+CRSM: 106,130,\"\"|OK"},
        {"AT+UPINCNT", "+UPINCNT: 3,3,10,10|OK"},
        {"AT+CPIN=\"0000\"", "+CME ERROR: incorrect password"},
        {"AT+UPINCNT", "+UPINCNT: 2,3,10,10|OK"},
        {"AT+CPIN=\"12\"", "+CME ERROR: incorrect parameters"},
        {"AT+UPINCNT", "+UPINCNT: 2,3,10,10|OK"},
        {"AT+CPIN=\"1234\"", "OK"},
        {"AT+CPIN?", "+CPIN: READY|OK"},
        {"AT+CPIN=\"1234\"", "+CME ERROR: operation not allowed"},
        {"AT+CIMI", "001010123456789|OK"},
        {"AT+CNUM", "+CNUM: ,\"+12025550100\",145|OK"},
    };
    EXPECT_ANSWERS(rows);
}

TEST_F(AtCommands, OnTheSimsCodes)
{
    run("state unlocked");
    constexpr Row rows[] = {
        {"AT+CMEE=1", "OK"},
        {"AT+CLCK=?", "+CLCK: (\"SC\",\"PN\")|OK"},
        {"AT+CLCK=\"SC\",2", "+CLCK: 1|OK"},
        {"AT+CLCK=\"SC\",0,\"9999\"", "+CME ERROR: 16"},
        {"AT+CLCK=\"SC\",0,\"1234\"", "OK"},
        {"AT+CLCK=\"SC\",2", "+CLCK: 0|OK"},
        {"AT+CLCK=\"SC\",1,\"1234\"", "OK"},
        {"AT+CPWD=\"SC\",\"1234\",\"4321\"", "OK"},
        {"AT+CPWD=\"SC\",\"1234\",\"4321\"", "+CME ERROR: 16"},
        {"AT+CLCK=\"PN\",2", "+CLCK: 0|OK"},
        {"AT+CLCK=\"PN\",1,\"11223344\"", "OK"},
        {"AT+CLCK=\"PN\",2", "+CLCK: 1|OK"},
        {"AT+CLCK=\"PN\",0,\"11223344\"", "OK"},
        {"AT+CLCK=\"FD\",2", "+CME ERROR: 4"},
    };
    EXPECT_ANSWERS(rows);
}

TEST_F(AtCommands, OnABlockedSim)
{
    run("pin-tries 0");
    constexpr Row rows[] = {
        {"AT+CMEE=1", "OK"},
        {"AT+CPIN?", "+CPIN: SIM PUK|OK"},
        {"AT+CPIN=\"1234\"", "+CME ERROR: 12"},
        {"AT+CPIN=\"00000000\",\"4321\"", "+CME ERROR: 16"},
        {"AT+UPINCNT", "+UPINCNT: 0,3,9,10|OK"},
        {"AT+CPIN=\"12345678\",\"4321\"", "OK"},
        {"AT+CPIN?", "+CPIN: READY|OK"},
    };
    EXPECT_ANSWERS(rows);
    run("sim remove");
    EXPECT_EQ(answer("AT+CPIN?"), "+CME ERROR: 10");
    EXPECT_EQ(answer("AT+UPINCNT"), "+CME ERROR: 10");
}

TEST_F(AtCommands, OnThePortsOwnSettings)
{
    constexpr Row rows[] = {
        {"ATE0V1Q0X4&C1", "OK"},
        {"ATE0 +CMEE=1;+CMEE?;+CREG=2", "+CMEE: 1|OK"},
        {"AT+CREG?", "+CREG: 2,0|OK"},
        {"AT+CMEE?;+FOO;+CMEE?", "+CMEE: 1|ERROR"}, // the rest of the line is not carried out
        {"AT+CMEE=7", "+CME ERROR: 50"},
        {"AT+CSCS=\"UCS2\";+CSCS?", "+CSCS: \"UCS2\"|OK"},
        {"AT+CSCS=\"KLINGON\"", "+CME ERROR: 50"},
        {"AT+CREG=?", "+CREG: (0-2)|OK"},
        {"AT+CSCS=\"UCS2", "ERROR"}, // the quotation mark has no partner
        {"AT/", "ERROR"},
        {"A/", "ERROR"}, // once more
        {"ATS0=0S7=30", "OK"},
        {"hello", ""},
        {"ATV0", "0"},
        {"AT+FOO", "4"},
        {"ATV1Q1", ""},
        {"ATQ0", "OK"},
        {"ATZ", "OK"},
        {"AT+CMEE?", "+CMEE: 0|OK"},
    };
    EXPECT_ANSWERS(rows);
    EXPECT_TRUE(port.echoes());
    answer("ATE0");
    EXPECT_FALSE(port.echoes());
}

TEST_F(AtCommands, OnTheModemItself)
{
    constexpr Row rows[] = {
        {"AT+CGMI", "CMIF|OK"},
        {"AT+CGMM", "CMIF-SIM LTE R1|OK"},
        {"AT+GMR", "SIMFW_01.02.03|OK"},
        {"AT+CGSN", "001010012345672|OK"},
        {"AT+GCAP", "+GCAP: +CGSM|OK"},
        {"AT+CFUN?", "+CFUN: 1|OK"},
        {"AT+CFUN=4", "OK"},
        {"AT+CFUN?", "+CFUN: 4|OK"},
        {"AT+CFUN=3", "ERROR"},
        {"AT+CFUN=1", "OK"},
        {"AT+CCLK?", "+CCLK: \"24/03/06,12:00:00+00\"|OK"},
        {"AT+URAT=?", "+URAT: (0-6),(0,2,3)|OK"},
        {"AT+URAT?", "+URAT: 4|OK"},
        {"AT+URAT=3", "OK"},
        {"AT+URAT?", "+URAT: 3|OK"},
        {"AT+URAT=6", "OK"},
        {"AT+URAT?", "+URAT: 6|OK"},
        {"AT+URAT=7", "ERROR"},
        {"ATD5550100;", "NO CARRIER"},
        {"ATH", "OK"},
    };
    EXPECT_ANSWERS(rows);
    clock.advance(61s);
    EXPECT_EQ(answer("AT+CCLK?"), "+CCLK: \"24/03/06,12:01:01+00\"|OK");
    constexpr Row of_the_clock[] = {
        {"AT+CTZU?", "+CTZU: 1|OK"},
        {"AT+CTZU=0", "OK"},
        {"AT+CTZU?", "+CTZU: 0|OK"},
        {"AT+CTZU=2", "ERROR"},
        {"AT+CCLK=\"25/12/31,23:59:58-14\"", "OK"},
        {"AT+CCLK?", "+CCLK: \"25/12/31,23:59:58-14\"|OK"},
        {"AT+CCLK=\"25/13/31,23:59:58-14\"", "ERROR"},
        {"AT+CCLK=\"25/12/31,23:59:58\"", "ERROR"},
        {"AT+CCLK=\"25/12/31,23:59:58+57\"", "ERROR"},
        {"AT+CCLK=\"25/12/31,23:59:58+0x\"", "ERROR"},
        {"AT+CCLK?", "+CCLK: \"25/12/31,23:59:58-14\"|OK"},
    };
    EXPECT_ANSWERS(of_the_clock);
    clock.advance(2s);
    EXPECT_EQ(answer("AT+CCLK?"), "+CCLK: \"26/01/01,00:00:00-14\"|OK");
    answer("AT+URAT=3");
    EXPECT_EQ(status().search_mode, daemons::SearchMode::eutran_only);
}

TEST_F(AtCommands, InANetwork)
{
    register_modem();
    run("signal rsrp=-100 rsrq=-10 rssi=-75");
    constexpr Row rows[] = {
        {"AT+CREG?", "+CREG: 0,1|OK"},
        {"AT+CREG=2;+CREG?", "+CREG: 2,1,\"1A2B\",\"01A2D003\",7|OK"},
        {"AT+CEREG=2;+CEREG?", "+CEREG: 2,1,\"1A2B\",\"01A2D003\",7|OK"},
        {"AT+CGREG?", "+CGREG: 0,0|OK"}, // no packet service before LTE
        {"AT+COPS?", "+COPS: 0,0,\"Test Network\",7|OK"},
        {"AT+COPS=3,2;+COPS?", "+COPS: 0,2,\"00101\",7|OK"},
        {"AT+CESQ", "+CESQ: 99,99,255,255,20,41|OK"},
        {"AT+CIND?", "+CIND: 3,1,0,1|OK"},
        {"AT+CGATT?", "+CGATT: 1|OK"},
        {"AT+CGATT=0;+CEREG?", "+CEREG: 2,0|OK"},
        {"AT+CGATT=1", "OK"},
        {"AT+COPS=1,2,\"99999\"", "ERROR"},
    };
    EXPECT_ANSWERS(rows);
}

TEST_F(AtCommands, AreAnsweredWhenTheNetworkIsThere)
{
    run("state unlocked");
    EXPECT_EQ(answer("AT+CREG?"), "+CREG: 0,2|OK");
    EXPECT_EQ(answer_in_time("AT+COPS=1,2,\"00102\",7"), "OK");
    EXPECT_EQ(answer("AT+COPS?"), "+COPS: 1,2,\"00102\",7|OK");
    EXPECT_EQ(answer_in_time("AT+COPS=0"), "OK");
    EXPECT_EQ(answer("AT+COPS?"), "+COPS: 0,2,\"00101\",7|OK");
    EXPECT_EQ(answer("AT+COPS=2;+COPS?;+CREG?"), "+COPS: 2|+CREG: 0,0|OK");
    EXPECT_EQ(status().registration, daemons::Registration::none);
    EXPECT_EQ(answer_in_time("AT+COPS=1,2,\"00102\""), "OK");
    EXPECT_EQ(answer("AT+COPS=2"), "OK");
    EXPECT_EQ(answer_in_time("AT+COPS=0"), "OK");
    EXPECT_EQ(answer("AT+COPS=2"), "OK");
    run("state registered");
    EXPECT_EQ(answer("AT+CREG?"), "+CREG: 0,1|OK");
    run("coverage none");
    answer("AT+CMEE=1");
    EXPECT_EQ(answer("AT+COPS=0"), "+CME ERROR: 30");
}

TEST_F(AtCommands, SearchForOperators)
{
    register_modem();
    run("coverage eutran");
    EXPECT_EQ(answer_in_time("AT+COPS=?"),
              "+COPS: (2,\"Test Network\",\"Test\",\"00101\",7),"
              "(1,\"Second Test Network\",\"Second\",\"00102\",7),"
              "(3,\"Closed Test Network\",\"Closed\",\"00103\",7),,(0,1,2,3,4),(0,1,2)|OK");
}

TEST_F(AtCommands, ThatTakeLongCanBeCancelled)
{
    register_modem();
    called_off = true;
    EXPECT_EQ(answer("AT+COPS=?"), "ERROR");
    EXPECT_EQ(status().search, daemons::CmeError::search_running); // the modem goes on by itself
}

TEST_F(AtCommands, ConnectWithAContext)
{
    register_modem();
    constexpr Row before[] = {
        {"AT+CGDCONT?", "+CGDCONT: 1,\"IPV4V6\",\"ims\",\"\",0,0|"
                        "+CGDCONT: 2,\"IPV4V6\",\"admin.example\",\"\",0,0|"
                        "+CGDCONT: 3,\"IPV4V6\",\"internet.example\",\"\",0,0|OK"},
        {"AT+CGDCONT=4,\"IP\",\"data.example\"", "OK"},
        {"AT+CGDCONT=17,\"IP\",\"data.example\"", "ERROR"},
        {"AT+CGDCONT=5,\"X25\",\"data.example\"", "ERROR"},
        {"AT+UAUTHREQ=4,1,\"user\",\"secret\"", "OK"},
        {"AT+CGACT?", "+CGACT: 1,0|+CGACT: 2,0|+CGACT: 3,0|+CGACT: 4,0|OK"},
        {"AT+CGPADDR=4", "+CGPADDR: 4|OK"},
        {"AT+UIPADDR=4", "ERROR"},
    };
    EXPECT_ANSWERS(before);
    EXPECT_EQ(answer_in_time("AT+CGACT=1,4"), "OK");
    constexpr Row after[] = {
        {"AT+CGACT?", "+CGACT: 1,0|+CGACT: 2,0|+CGACT: 3,0|+CGACT: 4,1|OK"},
        {"AT+CGPADDR=4", "+CGPADDR: 4,\"192.0.2.10\"|OK"},
        {"AT+CGCONTRDP=4", "+CGCONTRDP: 4,5,\"data.example\",\"192.0.2.10.255.255.255.0\","
                           "\"192.0.2.1\",\"192.0.2.53\"|OK"},
        {"AT+UIPADDR=4", "+UIPADDR: 4,\"ccinet0\",\"192.0.2.1\",\"255.255.255.0\",\"\",\"\"|OK"},
        {"AT+CGACT=1,4", "OK"},
        {"AT+CGACT=1,3", "ERROR"}, // one at a time
        {"AT+CGACT=0,3", "OK"},
    };
    EXPECT_ANSWERS(after);
    EXPECT_EQ(status().data_profile.user, "user");
    EXPECT_EQ(status().data_profile.password, "secret");
    EXPECT_EQ(status().data_profile.authentication, daemons::Authentication::pap);
    EXPECT_EQ(answer_in_time("AT+CGACT=0,4"), "OK");
    EXPECT_EQ(status().connection, daemons::ConnectionState::disconnected);
}

TEST_F(AtCommands, CannotConnectWithoutWhatThatNeeds)
{
    answer("AT+CMEE=1");
    EXPECT_EQ(answer("AT+CGACT=1,3"), "+CME ERROR: 11");
    register_modem();
    EXPECT_EQ(answer("AT+CGACT=1,9"), "+CME ERROR: 127"); // no access point name
}

TEST_F(AtCommands, OfAModemThatIsDownAreNotAnswered)
{
    answer("AT+CMEE=2");
    run("modem reset 5s");
    EXPECT_EQ(answer("AT"), "");
    clock.advance(6s);
    EXPECT_EQ(answer("AT+CMEE?"), "+CMEE: 0|OK"); // it starts from the beginning
}

} // namespace
