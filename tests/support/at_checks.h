// Every check of at_request.h under its name: a parameter of a suite that runs them over its rows.
//
//     class RadioRequests : public testing::TestWithParam<AtCheck> {};
//     TEST_P(RadioRequests, Pass) { for (const AtRequest &row : rows()) GetParam().check(row); }
//     INSTANTIATE_TEST_SUITE_P(EveryCheck, RadioRequests, testing::ValuesIn(at_checks),
//     check_name);
#ifndef TESTS_SUPPORT_AT_CHECKS_H
#define TESTS_SUPPORT_AT_CHECKS_H

#include "at_request.h"

#include <gtest/gtest.h>
#include <ostream>

struct AtCheck {
    const char *name;
    void (*check)(const AtRequest &request);
    bool of_reply = false; // only for requests that wait for one
};

inline constexpr AtCheck at_checks[] = {
    {"TracedRoundTrip", expect_traced_round_trip},
    {"SilentRoundTrip", expect_silent_round_trip},
    {"RequestQueueFailure", expect_request_queue_failure},
    {"ReplyQueueFailure", expect_reply_queue_failure, true},
    {"SendFailure", expect_send_failure},
    {"SilentFailures", expect_silent_failures},
    {"ReceiveRetries", expect_receive_retries, true},
    {"CodesPassedThrough", expect_codes_passed_through, true},
};

inline void PrintTo(const AtCheck &check, std::ostream *out)
{
    *out << check.name;
}

inline std::string check_name(const testing::TestParamInfo<AtCheck> &info)
{
    return info.param.name;
}

#endif
