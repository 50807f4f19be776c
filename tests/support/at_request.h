// A request to the AT daemon as a row of a test's table, and the checks that every request passes.
//
//     const AtRequest enter_pin{.name = "shared_CMIF_set_EntermobilePIN",
//                               .call = [] { return shared_CMIF_set_EntermobilePIN("1234"); },
//                               .code = 12,
//                               .fields = {.set_string = "1234"},
//                               .after_code = {"set_string=1234"}};
//     expect_traced_round_trip(enter_pin);
//
// Each check needs a function that this process has not called before: trace switches are read
// once. Many checks of one function are cases of their own; many functions may share a case.
#ifndef TESTS_SUPPORT_AT_REQUEST_H
#define TESTS_SUPPORT_AT_REQUEST_H

#include "record.h"

#include <functional>
#include <optional>
#include <string>

// The payload of a request by the fields that it fills, in this order; the others are zero. A text
// too long for its field overflows and is cut, with its NUL, at the end of the text part.
struct AtFields {
    std::optional<std::string> set_string{};
    std::optional<std::string> set_string2{};
    std::optional<std::string> set_string3{};
    std::optional<std::string> set_value{};
};
std::string at_payload(const AtFields &fields);

// A daemon's answer: ret_code, and noise in the fields that the library ignores.
std::string at_reply(int ret_code);

// The text of a payload at an offset, up to its NUL.
std::string text_at(const std::string &payload, size_t offset);

// The lines of the round trip's steps: %s is the function's name, %d the queue, %ld the code.
struct AtWords {
    std::string request_queue_failed;
    std::string reply_queue_failed;
    std::string queue;
    std::string code;
    std::string send_failed;
    std::string sent;
    std::string receive_failed;
    std::string received;
};
extern const AtWords common_words;
extern const AtWords daemon_words;

struct AtRequest {
    std::string name;
    std::function<int()> call;
    long code = 0;
    AtFields fields{};
    Lines before_code{}; // lines between the queue's and the code's
    Lines after_code{};  // lines between the code's and the send
    Lines follow_up{};   // steps after the reply: "get KEY" and "print LINE"
    const AtWords *words = &common_words;
    int no_reply_queue = -1; // the result when the reply queue can't be looked up
    bool waits = true;       // for a reply
};

// The steps of a call that succeeds, as if no switch had to be read; `queue` is the request queue.
Lines steps_of(const AtRequest &request, int queue);

// The same steps when every site reads its switch first; and without those reads, or the lines.
Lines with_switch_reads(const Lines &steps);
Lines without_switch_reads(const Lines &steps);
Lines without_prints(const Lines &steps);

// One step: a line of the words above, and a transfer over the queue of this key.
std::string print_step(const AtRequest &request, std::string line, int queue);
std::string transfer_step(const char *function, int key, long code);

// What the steps print.
std::string output_of(const Lines &steps);

// The switch on: steps, lines and payload, and on a second call no more reads of the switch.
void expect_traced_round_trip(const AtRequest &request);

// The switch off: the same steps, the same payload, no line.
void expect_silent_round_trip(const AtRequest &request);

// Each queue call fails: result and lines, and nothing happens afterwards.
void expect_request_queue_failure(const AtRequest &request);
void expect_reply_queue_failure(const AtRequest &request);
void expect_send_failure(const AtRequest &request);

// The same three, one after the other, with the switch off.
void expect_silent_failures(const AtRequest &request);

// The receive fails several times for several reasons: a line each, then the reply arrives.
void expect_receive_retries(const AtRequest &request);

// The daemon's code comes back as it is, small and negative ones too.
void expect_codes_passed_through(const AtRequest &request);

#endif
