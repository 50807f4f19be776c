// Fixture for profile modifications: a profile, and the marker around every call.
#ifndef TESTS_SUPPORT_QMI_MODIFY_H
#define TESTS_SUPPORT_QMI_MODIFY_H

#include "cmif/cmif.h"
#include "files.h"
#include "qmi_call.h"

#include <cstring>
#include <gtest/gtest.h>

class QmiModify : public QmiTest
{
protected:
    static inline const std::string api = "shared_CMIF_modify_profile_settings";

    QmiModify() { profile = {"internet", "me", "secret", 2, 3, 1}; }

    // A field's text from its first byte, without a NUL when it fills the field.
    template <size_t size>
    static void fill(char (&field)[size], const std::string &text)
    {
        ASSERT_LE(text.size(), size);
        memset(field, 0, size);
        memcpy(field, text.data(), text.size());
    }

    static Events marked(const char *command, const std::string &step)
    {
        return sequence(
            {did(std::string("system(") + command + " /tmp/modify_profile_in_progress)"),
             said("[CMIF]" + step + " done", "[" + step + "] done")});
    }

    // The call with these events between the creation and the removal of the marker.
    void expect_modify(int result, const std::vector<Events> &events, int from_auto_apn = 0)
    {
        queues.reply(3, "");
        expect_call(
            [&] { return shared_CMIF_modify_profile_settings(profile, from_auto_apn); }, result,
            {caller(api), marked("echo 1 >", "shared_CMIF_write_modify_profile_in_progress"),
             sequence(events), marked("rm", "shared_CMIF_remove_modify_profile_in_progress")});
        EXPECT_FALSE(file_exists(profile_busy_path));
        sent = queues.take_request();
        while (queues.take_reply()) {}
    }

    // The readiness check, the exchange, and the check again.
    [[nodiscard]] Events sending() const { return sequence({ready(), exchange_and_check()}); }
    [[nodiscard]] Events exchange_and_check() const
    {
        return sequence({exchange(3, 312), ready()});
    }

    qmi_profile profile{};
    std::optional<Message> sent; // the last call's request
};

#endif
