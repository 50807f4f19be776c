// The SIM card's codes and counters, and the modem's lock to a network.
#include "modems/simulated/network_lock.h"
#include "modems/simulated/sim_card.h"

#include <gtest/gtest.h>

namespace
{

using namespace sim;

constexpr const char *right = "1234";
constexpr const char *wrong = "0000";
constexpr const char *puk = "12345678";
constexpr const char *wrong_puk = "00000000";

class Card : public testing::Test
{
protected:
    void block()
    {
        for (int i = 0; i < Pin::most_tries; ++i)
            pin.verify(wrong);
        ASSERT_TRUE(pin.blocked());
    }
    void expect_counters(int tries, int puk_tries) const
    {
        EXPECT_EQ(pin.tries(), tries);
        EXPECT_EQ(pin.puk_tries(), puk_tries);
    }

    SimCard card;
    Pin &pin = card.pin1;
};

TEST_F(Card, StartsLockedWithAllTries)
{
    for (const Pin *one : {&card.pin1, &card.pin2}) {
        EXPECT_TRUE(one->enabled());
        EXPECT_FALSE(one->open());
        EXPECT_EQ(one->tries(), 3);
        EXPECT_EQ(one->puk_tries(), 10);
    }
}

TEST_F(Card, TheRightPinOpens)
{
    EXPECT_EQ(pin.verify(right), ret_ok);
    EXPECT_TRUE(pin.open());
    expect_counters(3, 10);
}

TEST_F(Card, TheSecondPinIsOfItsOwn)
{
    EXPECT_EQ(card.pin2.verify(right), ret_incorrect_password);
    EXPECT_EQ(card.pin2.verify("5678"), ret_ok);
    EXPECT_TRUE(card.pin2.open());
    EXPECT_FALSE(card.pin1.open());
    EXPECT_EQ(card.pin2.unblock("87654321", "2222"), ret_ok);
    EXPECT_EQ(card.pin2.verify("2222"), ret_ok);
    expect_counters(3, 10);
}

TEST_F(Card, AWrongPinCostsATryAndTheRightOneGivesAllBack)
{
    EXPECT_EQ(pin.verify(wrong), ret_incorrect_password);
    expect_counters(2, 10);
    EXPECT_EQ(pin.verify(wrong), ret_incorrect_password);
    expect_counters(1, 10);
    EXPECT_FALSE(pin.open());
    EXPECT_EQ(pin.verify(right), ret_ok);
    expect_counters(3, 10);
}

TEST_F(Card, TheThirdWrongPinAsksForThePuk)
{
    pin.verify(wrong);
    pin.verify(wrong);
    EXPECT_EQ(pin.verify(wrong), ret_sim_puk_required);
    EXPECT_TRUE(pin.blocked());
    expect_counters(0, 10);
}

TEST_F(Card, ABlockedPinRefusesEverythingButThePuk)
{
    block();
    EXPECT_EQ(pin.verify(right), ret_sim_puk_required);
    EXPECT_EQ(pin.change(right, "4321"), ret_sim_puk_required);
    EXPECT_EQ(pin.set_enabled(false, right), ret_sim_puk_required);
    expect_counters(0, 10);
    EXPECT_FALSE(pin.open());
}

TEST_F(Card, VerifyingAgainIsFineAndStillCounts)
{
    ASSERT_EQ(pin.verify(right), ret_ok);
    EXPECT_EQ(pin.verify(right), ret_ok);
    EXPECT_EQ(pin.verify(wrong), ret_incorrect_password);
    expect_counters(2, 10);
    EXPECT_TRUE(pin.open());
}

TEST_F(Card, BlockingTakesBackWhatWasOpen)
{
    ASSERT_EQ(pin.verify(right), ret_ok);
    block();
    EXPECT_FALSE(pin.open());
}

TEST_F(Card, ThePukUnblocksAndGivesAllTriesBack)
{
    block();
    ASSERT_EQ(pin.unblock(wrong_puk, "4321"), ret_incorrect_password);
    expect_counters(0, 9);
    EXPECT_EQ(pin.unblock(puk, "4321"), ret_ok);
    expect_counters(3, 10);
    EXPECT_TRUE(pin.open());
    pin.power_cycle();
    EXPECT_EQ(pin.verify(right), ret_incorrect_password);
    EXPECT_EQ(pin.verify("4321"), ret_ok);
}

TEST_F(Card, ThePukWorksOnACardThatIsNotBlocked)
{
    pin.verify(wrong);
    EXPECT_EQ(pin.unblock(puk, "4321"), ret_ok);
    expect_counters(3, 10);
    EXPECT_TRUE(pin.open());
}

TEST_F(Card, ThePukSwitchesThePinOnAgain)
{
    pin.verify(right);
    ASSERT_EQ(pin.set_enabled(false, right), ret_ok);
    EXPECT_EQ(pin.unblock(puk, right), ret_ok);
    EXPECT_TRUE(pin.enabled());
}

TEST_F(Card, TheTenthWrongPukKillsTheCard)
{
    block();
    for (int left = 9; left > 0; --left) {
        EXPECT_EQ(pin.unblock(wrong_puk, right), ret_incorrect_password);
        expect_counters(0, left);
    }
    EXPECT_FALSE(pin.dead());
    EXPECT_EQ(pin.unblock(wrong_puk, right), ret_sim_failure);
    EXPECT_TRUE(pin.dead());
    EXPECT_EQ(pin.unblock(puk, right), ret_sim_failure);
    EXPECT_EQ(pin.verify(right), ret_sim_failure);
    EXPECT_EQ(pin.change(right, "4321"), ret_sim_failure);
    EXPECT_EQ(pin.set_enabled(false, right), ret_sim_failure);
    pin.power_cycle();
    EXPECT_EQ(pin.verify(right), ret_sim_failure);
    expect_counters(0, 0);
}

TEST_F(Card, WrongPuksKillAnOpenCardToo)
{
    pin.verify(right);
    for (int i = 0; i < Pin::most_puk_tries; ++i)
        pin.unblock(wrong_puk, right);
    EXPECT_TRUE(pin.dead());
    EXPECT_FALSE(pin.open());
    EXPECT_EQ(pin.verify(right), ret_sim_failure);
}

TEST_F(Card, MalformedCodesCostNoTry)
{
    for (const char *code : {"", "123", "123456789", "12a4", "12 4", "-123", "١٢٣٤"}) {
        EXPECT_EQ(pin.verify(code), ret_incorrect_parameters) << code;
        EXPECT_EQ(pin.change(code, right), ret_incorrect_parameters) << code;
        EXPECT_EQ(pin.change(right, code), ret_incorrect_parameters) << code;
        EXPECT_EQ(pin.set_enabled(false, code), ret_incorrect_parameters) << code;
        EXPECT_EQ(pin.unblock(puk, code), ret_incorrect_parameters) << code;
    }
    for (const char *code : {"", "1234567", "123456789", "1234567x"})
        EXPECT_EQ(pin.unblock(code, right), ret_incorrect_parameters) << code;
    expect_counters(3, 10);
    EXPECT_FALSE(pin.open());
}

TEST_F(Card, AChangeNeedsTheOldPin)
{
    EXPECT_EQ(pin.change(wrong, "4321"), ret_incorrect_password);
    expect_counters(2, 10);
    EXPECT_EQ(pin.change(right, "87654321"), ret_ok);
    expect_counters(3, 10);
    pin.power_cycle();
    EXPECT_EQ(pin.verify(right), ret_incorrect_password);
    EXPECT_EQ(pin.verify("87654321"), ret_ok);
}

TEST_F(Card, ThirdWrongOldPinBlocks)
{
    pin.change(wrong, "4321");
    pin.change(wrong, "4321");
    EXPECT_EQ(pin.change(wrong, "4321"), ret_sim_puk_required);
    EXPECT_TRUE(pin.blocked());
}

TEST_F(Card, PinModeNeedsThePin)
{
    pin.verify(right);
    EXPECT_EQ(pin.set_enabled(false, wrong), ret_incorrect_password);
    expect_counters(2, 10);
    EXPECT_TRUE(pin.enabled());
    EXPECT_EQ(pin.set_enabled(false, right), ret_ok);
    expect_counters(3, 10);
    EXPECT_FALSE(pin.enabled());

    EXPECT_EQ(pin.set_enabled(true, wrong), ret_incorrect_password);
    EXPECT_EQ(pin.set_enabled(true, right), ret_ok);
    EXPECT_TRUE(pin.enabled());
    EXPECT_TRUE(pin.open());
}

TEST_F(Card, AModeThatIsSetAlreadyCostsNothing)
{
    EXPECT_EQ(pin.set_enabled(true, wrong), ret_not_allowed);
    pin.verify(right);
    pin.set_enabled(false, right);
    EXPECT_EQ(pin.set_enabled(false, wrong), ret_not_allowed);
    expect_counters(3, 10);
}

TEST_F(Card, WithoutPinModeThereIsNothingToVerifyOrChange)
{
    pin.verify(right);
    pin.set_enabled(false, right);
    EXPECT_EQ(pin.verify(right), ret_not_allowed);
    EXPECT_EQ(pin.change(right, "4321"), ret_not_allowed);
    expect_counters(3, 10);
}

TEST_F(Card, SwitchingOnWithWrongPinsBlocksACardThatWasOpen)
{
    pin.verify(right);
    pin.set_enabled(false, right);
    for (int i = 0; i < 3; ++i)
        pin.set_enabled(true, wrong);
    EXPECT_TRUE(pin.blocked());
    EXPECT_FALSE(pin.open());
}

TEST_F(Card, APowerCycleLocksAndForgivesNothing)
{
    pin.verify(right);
    pin.verify(wrong);
    card.power_cycle();
    EXPECT_FALSE(pin.open());
    expect_counters(2, 10);
}

TEST_F(Card, WithoutPinModeAPowerCycleLeavesItOpen)
{
    pin.verify(right);
    pin.set_enabled(false, right);
    card.power_cycle();
    EXPECT_TRUE(pin.open());
}

constexpr const char *key = NetworkLock::control_key;
constexpr const char *home = "00101";

TEST(NetworkLock, ShutsOutSimsOfOtherNetworks)
{
    NetworkLock lock;
    EXPECT_FALSE(lock.shuts_out(home));
    EXPECT_EQ(lock.set("PN", "1", "00102", key, home), ret_ok);
    EXPECT_TRUE(lock.shuts_out(home));
    EXPECT_EQ(lock.set("PN", "1", "", key, home), ret_ok);
    EXPECT_FALSE(lock.shuts_out(home));
    EXPECT_EQ(lock.set("PN", "1", "999700", key, home), ret_ok);
    EXPECT_EQ(lock.unlock(key), ret_ok);
    EXPECT_FALSE(lock.shuts_out(home));
    EXPECT_EQ(lock.unlock(key), ret_not_allowed);
}

TEST(NetworkLock, ModeZeroUnlocks)
{
    NetworkLock lock;
    lock.set("PN", "1", "00102", key, home);
    EXPECT_EQ(lock.set("PN", "0", "", key, home), ret_ok);
    EXPECT_FALSE(lock.shuts_out(home));
}

TEST(NetworkLock, RefusesWhatItDoesNotKnow)
{
    NetworkLock lock;
    EXPECT_EQ(lock.set("PP", "1", "00102", key, home), ret_not_supported);
    EXPECT_EQ(lock.set("", "1", "00102", key, home), ret_not_supported);
    EXPECT_EQ(lock.set("PN", "2", "00102", key, home), ret_incorrect_parameters);
    EXPECT_EQ(lock.set("PN", "", "00102", key, home), ret_incorrect_parameters);
    EXPECT_EQ(lock.set("PN", "1", "0010", key, home), ret_incorrect_parameters);
    EXPECT_EQ(lock.set("PN", "1", "0010203", key, home), ret_incorrect_parameters);
    EXPECT_EQ(lock.set("PN", "1", "00102", "1122334", home), ret_incorrect_parameters);
    EXPECT_EQ(lock.tries(), 10);
    EXPECT_FALSE(lock.shuts_out(home));
}

TEST(NetworkLock, TenWrongKeysEndIt)
{
    NetworkLock lock;
    lock.set("PN", "1", "00102", key, home);
    for (int left = 9; left >= 0; --left) {
        EXPECT_EQ(lock.unlock("00000000"), ret_incorrect_password);
        EXPECT_EQ(lock.tries(), left);
    }
    EXPECT_EQ(lock.unlock(key), ret_not_allowed);
    EXPECT_EQ(lock.set("PN", "1", "", key, home), ret_not_allowed);
    EXPECT_TRUE(lock.shuts_out(home));
}

TEST(NetworkLock, TheRightKeyGivesAllTriesBack)
{
    NetworkLock lock;
    EXPECT_EQ(lock.set("PN", "1", "00102", "00000000", home), ret_incorrect_password);
    EXPECT_EQ(lock.tries(), 9);
    EXPECT_EQ(lock.set("PN", "1", "00102", key, home), ret_ok);
    EXPECT_EQ(lock.tries(), 10);
}

TEST(RetCodes, CanNotBeMistakenForTheLibrarysResults)
{
    for (const RetCodeText &entry : ret_codes) {
        EXPECT_TRUE(entry.code == ret_ok || entry.code >= 10) << entry.name;
        EXPECT_EQ(find_ret_code(entry.code), &entry) << "number used twice";
        EXPECT_STRNE(entry.text, "");
    }
    EXPECT_EQ(find_ret_code(1), nullptr);
}

} // namespace
