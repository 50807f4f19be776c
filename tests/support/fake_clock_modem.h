// The whole modem on a fake clock, with a locked SIM until a test unlocks it.
#ifndef TESTS_SUPPORT_FAKE_CLOCK_MODEM_H
#define TESTS_SUPPORT_FAKE_CLOCK_MODEM_H

#include "modems/simulated/modem_state.h"

#include <chrono>
#include <gtest/gtest.h>

class FakeClockModem : public testing::Test
{
protected:
    void pass(scenario::Duration time)
    {
        now += time;
        modem.update(now);
    }
    void unlock()
    {
        ASSERT_EQ(modem.sim.pin1.verify("1234"), daemons::CmeError::ok);
        pass(std::chrono::seconds(0));
        pass(std::chrono::seconds(3));
        ASSERT_NE(modem.network.serving(), nullptr);
    }

    simulated::ModemState modem{scenario::TimeScale(1), 1};
    scenario::Time now{};
};

#endif
