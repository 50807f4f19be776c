// The SIM card's codes and counters.
#include "modems/simulated/sim_card.h"

#include <gtest/gtest.h>

namespace
{

using namespace daemons;
using namespace simulated;

constexpr const char *right = "1234";
constexpr const char *wrong = "0000";
constexpr const char *puk = "12345678";
constexpr const char *wrong_puk = "00000000";

class Card : public testing::Test
{
protected:
    void block()
    {
        for (int i = 0; i < Pin::max_attempts; ++i)
            pin.verify(wrong);
        ASSERT_TRUE(pin.puk_required());
    }
    void expect_counters(int attempts, int puk_attempts) const
    {
        EXPECT_EQ(pin.attempts(), attempts);
        EXPECT_EQ(pin.puk_attempts(), puk_attempts);
    }

    SimCard card;
    Pin &pin = card.pin1;
};

TEST_F(Card, StartsLockedWithAllAttempts)
{
    for (const Pin *one : {&card.pin1, &card.pin2}) {
        EXPECT_TRUE(one->enabled());
        EXPECT_FALSE(one->unlocked());
        EXPECT_EQ(one->attempts(), 3);
        EXPECT_EQ(one->puk_attempts(), 10);
    }
}

TEST_F(Card, TheRightPinUnlocks)
{
    EXPECT_EQ(pin.verify(right), CmeError::ok);
    EXPECT_TRUE(pin.unlocked());
    expect_counters(3, 10);
}

TEST_F(Card, TheSecondPinIsIndependent)
{
    EXPECT_EQ(card.pin2.verify(right), CmeError::incorrect_password);
    EXPECT_EQ(card.pin2.verify("5678"), CmeError::ok);
    EXPECT_TRUE(card.pin2.unlocked());
    EXPECT_FALSE(card.pin1.unlocked());
    EXPECT_EQ(card.pin2.unblock("87654321", "2222"), CmeError::ok);
    EXPECT_EQ(card.pin2.verify("2222"), CmeError::ok);
    expect_counters(3, 10);
}

TEST_F(Card, AWrongPinUsesUpAnAttemptAndTheRightOneRestoresAll)
{
    EXPECT_EQ(pin.verify(wrong), CmeError::incorrect_password);
    expect_counters(2, 10);
    EXPECT_EQ(pin.verify(wrong), CmeError::incorrect_password);
    expect_counters(1, 10);
    EXPECT_FALSE(pin.unlocked());
    EXPECT_EQ(pin.verify(right), CmeError::ok);
    expect_counters(3, 10);
}

TEST_F(Card, TheThirdWrongPinAsksForThePuk)
{
    pin.verify(wrong);
    pin.verify(wrong);
    EXPECT_EQ(pin.verify(wrong), CmeError::sim_puk_required);
    EXPECT_TRUE(pin.puk_required());
    expect_counters(0, 10);
}

TEST_F(Card, ABlockedPinRefusesEverythingButThePuk)
{
    block();
    EXPECT_EQ(pin.verify(right), CmeError::sim_puk_required);
    EXPECT_EQ(pin.change(right, "4321"), CmeError::sim_puk_required);
    EXPECT_EQ(pin.set_enabled(false, right), CmeError::sim_puk_required);
    expect_counters(0, 10);
    EXPECT_FALSE(pin.unlocked());
}

TEST_F(Card, VerifyingAgainIsFineAndStillCounts)
{
    ASSERT_EQ(pin.verify(right), CmeError::ok);
    EXPECT_EQ(pin.verify(right), CmeError::ok);
    EXPECT_EQ(pin.verify(wrong), CmeError::incorrect_password);
    expect_counters(2, 10);
    EXPECT_TRUE(pin.unlocked());
}

TEST_F(Card, BlockingLocksTheCardAgain)
{
    ASSERT_EQ(pin.verify(right), CmeError::ok);
    block();
    EXPECT_FALSE(pin.unlocked());
}

TEST_F(Card, ThePukUnblocksAndRestoresAllAttempts)
{
    block();
    ASSERT_EQ(pin.unblock(wrong_puk, "4321"), CmeError::incorrect_password);
    expect_counters(0, 9);
    EXPECT_EQ(pin.unblock(puk, "4321"), CmeError::ok);
    expect_counters(3, 10);
    EXPECT_TRUE(pin.unlocked());
    pin.power_cycle();
    EXPECT_EQ(pin.verify(right), CmeError::incorrect_password);
    EXPECT_EQ(pin.verify("4321"), CmeError::ok);
}

TEST_F(Card, ThePukWorksOnACardThatIsNotBlocked)
{
    pin.verify(wrong);
    EXPECT_EQ(pin.unblock(puk, "4321"), CmeError::ok);
    expect_counters(3, 10);
    EXPECT_TRUE(pin.unlocked());
}

TEST_F(Card, ThePukSwitchesThePinOnAgain)
{
    pin.verify(right);
    ASSERT_EQ(pin.set_enabled(false, right), CmeError::ok);
    EXPECT_EQ(pin.unblock(puk, right), CmeError::ok);
    EXPECT_TRUE(pin.enabled());
}

TEST_F(Card, TheTenthWrongPukBlocksPermanently)
{
    block();
    for (int left = 9; left > 0; --left) {
        EXPECT_EQ(pin.unblock(wrong_puk, right), CmeError::incorrect_password);
        expect_counters(0, left);
    }
    EXPECT_FALSE(pin.permanently_blocked());
    EXPECT_EQ(pin.unblock(wrong_puk, right), CmeError::sim_failure);
    EXPECT_TRUE(pin.permanently_blocked());
    EXPECT_EQ(pin.unblock(puk, right), CmeError::sim_failure);
    EXPECT_EQ(pin.verify(right), CmeError::sim_failure);
    EXPECT_EQ(pin.change(right, "4321"), CmeError::sim_failure);
    EXPECT_EQ(pin.set_enabled(false, right), CmeError::sim_failure);
    pin.power_cycle();
    EXPECT_EQ(pin.verify(right), CmeError::sim_failure);
    expect_counters(0, 0);
}

TEST_F(Card, WrongPuksBlockAnUnlockedCardToo)
{
    pin.verify(right);
    for (int i = 0; i < Pin::max_puk_attempts; ++i)
        pin.unblock(wrong_puk, right);
    EXPECT_TRUE(pin.permanently_blocked());
    EXPECT_FALSE(pin.unlocked());
    EXPECT_EQ(pin.verify(right), CmeError::sim_failure);
}

TEST_F(Card, MalformedCodesUseUpNoAttempt)
{
    for (const char *code : {"", "123", "123456789", "12a4", "12 4", "-123", "١٢٣٤"}) {
        EXPECT_EQ(pin.verify(code), CmeError::incorrect_parameters) << code;
        EXPECT_EQ(pin.change(code, right), CmeError::incorrect_parameters) << code;
        EXPECT_EQ(pin.change(right, code), CmeError::incorrect_parameters) << code;
        EXPECT_EQ(pin.set_enabled(false, code), CmeError::incorrect_parameters) << code;
        EXPECT_EQ(pin.unblock(puk, code), CmeError::incorrect_parameters) << code;
    }
    for (const char *code : {"", "1234567", "123456789", "1234567x"})
        EXPECT_EQ(pin.unblock(code, right), CmeError::incorrect_parameters) << code;
    expect_counters(3, 10);
    EXPECT_FALSE(pin.unlocked());
}

TEST_F(Card, AChangeNeedsTheOldPin)
{
    EXPECT_EQ(pin.change(wrong, "4321"), CmeError::incorrect_password);
    expect_counters(2, 10);
    EXPECT_EQ(pin.change(right, "87654321"), CmeError::ok);
    expect_counters(3, 10);
    pin.power_cycle();
    EXPECT_EQ(pin.verify(right), CmeError::incorrect_password);
    EXPECT_EQ(pin.verify("87654321"), CmeError::ok);
}

TEST_F(Card, ThirdWrongOldPinBlocks)
{
    pin.change(wrong, "4321");
    pin.change(wrong, "4321");
    EXPECT_EQ(pin.change(wrong, "4321"), CmeError::sim_puk_required);
    EXPECT_TRUE(pin.puk_required());
}

TEST_F(Card, PinModeNeedsThePin)
{
    pin.verify(right);
    EXPECT_EQ(pin.set_enabled(false, wrong), CmeError::incorrect_password);
    expect_counters(2, 10);
    EXPECT_TRUE(pin.enabled());
    EXPECT_EQ(pin.set_enabled(false, right), CmeError::ok);
    expect_counters(3, 10);
    EXPECT_FALSE(pin.enabled());

    EXPECT_EQ(pin.set_enabled(true, wrong), CmeError::incorrect_password);
    EXPECT_EQ(pin.set_enabled(true, right), CmeError::ok);
    EXPECT_TRUE(pin.enabled());
    EXPECT_TRUE(pin.unlocked());
}

TEST_F(Card, AModeThatIsSetAlreadyUsesUpNoAttempt)
{
    EXPECT_EQ(pin.set_enabled(true, wrong), CmeError::not_allowed);
    pin.verify(right);
    pin.set_enabled(false, right);
    EXPECT_EQ(pin.set_enabled(false, wrong), CmeError::not_allowed);
    expect_counters(3, 10);
}

TEST_F(Card, WithoutPinModeThereIsNothingToVerifyOrChange)
{
    pin.verify(right);
    pin.set_enabled(false, right);
    EXPECT_EQ(pin.verify(right), CmeError::not_allowed);
    EXPECT_EQ(pin.change(right, "4321"), CmeError::not_allowed);
    expect_counters(3, 10);
}

TEST_F(Card, EnablingWithWrongPinsBlocksAnUnlockedCard)
{
    pin.verify(right);
    pin.set_enabled(false, right);
    for (int i = 0; i < 3; ++i)
        pin.set_enabled(true, wrong);
    EXPECT_TRUE(pin.puk_required());
    EXPECT_FALSE(pin.unlocked());
}

TEST_F(Card, APowerCycleLocksAndRestoresNoAttempt)
{
    pin.verify(right);
    pin.verify(wrong);
    card.power_cycle();
    EXPECT_FALSE(pin.unlocked());
    expect_counters(2, 10);
}

TEST_F(Card, WithoutPinModeAPowerCycleLeavesItUnlocked)
{
    pin.verify(right);
    pin.set_enabled(false, right);
    card.power_cycle();
    EXPECT_TRUE(pin.unlocked());
}

} // namespace
