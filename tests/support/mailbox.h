// The caller's side of the list of messages: an array full of noise, and its counts.
//
//     store::set("lte_mobile_sms_counts", "1");
//     store::set(message_key("id", 1), "3");
//     Mailbox box;
//     read_messages(box);
//     EXPECT_EQ(box.messages[0].id, 3);
#ifndef TESTS_SUPPORT_MAILBOX_H
#define TESTS_SUPPORT_MAILBOX_H

#include "cmif/cmif.h"
#include "record.h"

#include <string>
#include <vector>

struct Mailbox {
    static constexpr int noise = 0x5A;

    explicit Mailbox(size_t size = 4) : messages(size) { fill(); }

    void fill();
    [[nodiscard]] bool is_untouched(size_t index) const;

    std::vector<cmif_sms_info> messages;
    int count = 4711;
    int unreads = 4711;
};

// "lte_mobile_sms_id_1" and the like.
std::string message_key(const char *field, int number);

// One call; the daemon has already answered, and the store holds what the test has put there.
Recorded read_messages(cmif_sms_info *messages, int *count, int *unreads, int ret_code = 0);
Recorded read_messages(Mailbox &box);

#endif
