// The whole modem in a time of its own, with a locked SIM until it is opened.
#ifndef TESTS_SUPPORT_FAKE_CLOCK_MODEM_H
#define TESTS_SUPPORT_FAKE_CLOCK_MODEM_H

#include "modems/simulated/modem.h"

#include <chrono>
#include <gtest/gtest.h>

class ModemInTime : public testing::Test
{
protected:
    void pass(sim::Clock::duration time)
    {
        now += time;
        modem.update(now);
    }
    void open()
    {
        ASSERT_EQ(modem.sim.pin1.verify("1234"), sim::ret_ok);
        pass(std::chrono::seconds(0));
        pass(std::chrono::seconds(3));
        ASSERT_NE(modem.network.serving(), nullptr);
    }

    sim::ModemState modem{sim::Pace(1), 1};
    sim::Clock::time_point now{};
};

#endif
