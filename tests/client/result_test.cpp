// What a result code means.
#include "client/result.h"
#include "daemons/cme_error.h"

#include <gtest/gtest.h>

namespace
{

using namespace client;

template <class... Answered>
Exit status_of(void (*check)(const char *, int, Answered...), int result, Answered... answered)
{
    try {
        check("call", result, answered...);
    } catch (const Failure &failure) {
        return failure.status();
    }
    return Exit::done;
}

TEST(Result, AtCodesHaveTheirExitStatus)
{
    EXPECT_EQ(status_of(check_at, 0, true), Exit::done);
    EXPECT_EQ(status_of(check_at, 0, false), Exit::done);
    EXPECT_EQ(status_of(check_at, 2, false), Exit::not_ready);
    EXPECT_EQ(status_of(check_at, -1, false), Exit::not_ready);
    EXPECT_EQ(status_of(check_at, 3, false), Exit::other);
    for (const int daemon_code : {1, 4, 5, 7, 16, 999, -2, -1, 2, 3})
        EXPECT_EQ(status_of(check_at, daemon_code, true), Exit::refused) << daemon_code;
}

TEST(Result, QmiCodesHaveTheirExitStatus)
{
    const Exit expected[]{Exit::done,  Exit::not_ready, Exit::not_ready, Exit::other,
                          Exit::other, Exit::invalid,   Exit::no_file,   Exit::profile_busy};
    for (int result = 0; result < 8; ++result)
        EXPECT_EQ(status_of(check_qmi, result), expected[result]) << result;
}

TEST(Result, ARefusalNamesTheCode)
{
    try {
        check_at("call", 16, true);
        FAIL();
    } catch (const Failure &failure) {
        EXPECT_STREQ(failure.what(), "call: the AT daemon refused: incorrect password (16)");
        EXPECT_EQ(failure.hint(), "See the attempts left with 'cmifctl sim retries'.");
        EXPECT_EQ(failure.details().dump(),
                  R"({"daemon":{"code":16,"name":"incorrect_password"}})");
    }
}

TEST(Result, AnUnknownCodeIsShownAsANumber)
{
    EXPECT_EQ(daemon_error_text(777), "code 777");
    EXPECT_EQ(daemon_error_hint(777), "");
    EXPECT_EQ(daemon_error(777).dump(), R"({"code":777,"name":null})");
}

// What helps depends on what was asked for.
TEST(Result, HintsNameTheRemedy)
{
    struct {
        const char *function;
        daemons::CmeError error;
        const char *hint;
    } const rows[]{
        {"shared_CMIF_set_ModeManualSearch", daemons::CmeError::network_pin_required,
         "insert one of those, or give the control key with 'cmifctl sim unlock-network'"},
        {"shared_CMIF_set_NetworkPersonalizationUNLock", daemons::CmeError::incorrect_password,
         "does not tell how many are left"},
        {"shared_CMIF_set_NetworkPersonalizationLock", daemons::CmeError::incorrect_password,
         "does not tell how many are left"},
        {"shared_CMIF_set_NetworkPersonalizationUNLock", daemons::CmeError::not_allowed,
         "no attempts at the control key are left"},
        {"shared_CMIF_set_EntermobilePIN", daemons::CmeError::incorrect_password,
         "cmifctl sim retries"},
        {"shared_CMIF_set_ChangemobileSimPIN", daemons::CmeError::not_allowed,
         "cmifctl sim pin-mode on"},
        {"shared_CMIF_set_mobileSimPINMode", daemons::CmeError::not_allowed, "set so already"},
        {"shared_CMIF_set_ModeManualSearch", daemons::CmeError::not_allowed,
         "which no reading shows, switch it on with 'cmifctl radio functionality full'"},
        {"shared_CMIF_SetNetworkProvider", daemons::CmeError::no_network_service,
         "or not with this technology: 'cmifctl network scan' lists"},
        {"shared_CMIF_set_TriggerOTADMSession", daemons::CmeError::no_network_service,
         "cmifctl network auto"},
        {"shared_CMIF_SetNetworkProvider", daemons::CmeError::network_not_allowed,
         "Choose another operator"},
        {"shared_CMIF_get_mobileSMSInfo", daemons::CmeError::no_connection_to_phone,
         "The daemon has no modem"},
    };
    for (const auto &row : rows) {
        try {
            check_at(row.function, static_cast<int>(row.error), true);
            FAIL();
        } catch (const Failure &failure) {
            EXPECT_NE(failure.hint().find(row.hint), std::string::npos)
                << row.function << ": " << failure.hint();
        }
    }
}

TEST(Result, EveryErrorOfADaemonHasNameAndText)
{
    for (const daemons::CmeErrorText &row : daemons::cme_errors) {
        const int code = static_cast<int>(row.error);
        EXPECT_EQ(daemon_error(code)["name"], row.name);
        EXPECT_EQ(daemon_error_text(code), row.text + (" (" + std::to_string(code) + ")"));
    }
}

} // namespace
