#include "fault_kinds.h"

#include "cmif/cmif.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>

namespace cmif_sim
{
namespace
{

using enum FaultStage;
using enum FaultValue;

constexpr int max_payload = 8000; // of a message, with the system's usual limit
constexpr int min_int = std::numeric_limits<int>::min();
constexpr int max_int = std::numeric_limits<int>::max();
constexpr std::size_t at_text = CMIF_AT_PAYLOAD - sizeof(std::int32_t);

// The ret_code lies after the text of an AT record, and at the start of a QMI one.
void set_ret_code(Reply &reply, int number)
{
    const std::size_t offset = reply.channel == Channel::at ? at_text : 0;
    std::memcpy(reply.payload.data() + offset, &number, sizeof number);
}

void fill_text(Reply &reply, int)
{
    std::memset(reply.payload.data(), 'x',
                reply.channel == Channel::at ? at_text : reply.payload.size());
}

// Bytes with each bit set and clear, the same every time.
void fill_noise(Reply &reply, int)
{
    unsigned char next = 0xa5;
    for (char &byte : reply.payload)
        byte = static_cast<char>(next = static_cast<unsigned char>(next * 5 + 3));
}

void shorten(Reply &reply, int bytes)
{
    const std::size_t size = reply.payload.size();
    reply.payload.resize(size - std::min(size, static_cast<std::size_t>(bytes)));
}

void lengthen(Reply &reply, int bytes)
{
    reply.payload.resize(reply.payload.size() + static_cast<std::size_t>(bytes));
}

// No request has such a code.
void change_type(Reply &reply, int)
{
    reply.type += 1000;
}

void repeat(Reply &reply, int)
{
    reply.copies *= 2;
}

void drop(Reply &reply, int)
{
    reply.copies = 0;
}

void delay(Reply &reply, int milliseconds)
{
    reply.delay += std::chrono::milliseconds(milliseconds);
}

// clang-format off
constexpr FaultKind kinds[] = {
    {"delay",        reply,   duration,        0, 0, 0,                "DURATION", "answer later", delay},
    {"drop",         reply,   none,            0, 0, 0,                "",         "do what is asked and never answer", drop},
    {"twice",        reply,   none,            0, 0, 0,                "",         "answer twice", repeat},
    {"wrong-type",   reply,   none,            0, 0, 0,                "",         "answer with the request code of no caller", change_type},
    {"short",        reply,   optional_number, 1, CMIF_QMI_PAYLOAD, 4, "[BYTES]",  "answer without the last bytes (4)", shorten},
    {"long",         reply,   optional_number, 1, max_payload - CMIF_QMI_PAYLOAD, 8, "[BYTES]", "answer with more bytes than there should be (8)", lengthen},
    {"unterminated", reply,   none,            0, 0, 0,                "",         "answer with text that has no NUL", fill_text},
    {"noise",        reply,   none,            0, 0, 0,                "",         "answer with arbitrary bytes", fill_noise},
    {"ret",          reply,   number,          min_int, max_int, 0,    "N",        "answer with this ret_code", set_ret_code},
    {"ignore",       request, none,            0, 0, 0,                "",         "take a request, and neither carry it out nor answer"},
    {"freeze",       request, none,            0, 0, 0,                "",         "stop, with all that the daemon has taken, until thaw"},
    {"die",          request, none,            0, 0, 0,                "",         "end as if killed: queues, marker and requests stay"},
    {"thaw",         once,    none,            0, 0, 0,                "",         "go on after freeze"},
    {"restart",      once,    none,            0, 0, 0,                "",         "end, if it runs, and start again"},
    {"not-ready",    once,    none,            0, 0, 0,                "",         "remove the readiness marker (QMI)"},
    {"ready",        once,    none,            0, 0, 0,                "",         "make the readiness marker again (QMI)"},
    {"remove-queue", once,    queue,           0, 0, 0,                "request|reply", "remove a message queue with all that it holds"},
    {"foreign",      once,    number,          1, 100'000, 0,          "N",        "put N replies in the reply queue that no caller waits for, as many as fit"},
    {"stale",        once,    optional_number, 1, 100'000, 1,          "[N]",      "put N replies (1) to the request CODE in the reply queue, as to a caller that has gone"},
};
// clang-format on

} // namespace

std::span<const FaultKind> fault_kinds()
{
    return kinds;
}

const FaultKind *find_fault_kind(std::string_view name)
{
    const auto *const found =
        std::find_if(std::begin(kinds), std::end(kinds),
                     [&](const FaultKind &kind) { return kind.name == name; });
    return found == std::end(kinds) ? nullptr : found;
}

} // namespace cmif_sim
