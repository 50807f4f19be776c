// What the list of messages makes of a stored message, written a second time: with strings.
#ifndef TESTS_CMIF_REFERENCE_MESSAGE_COPY_H
#define TESTS_CMIF_REFERENCE_MESSAGE_COPY_H

#include "cmif/cmif.h"

#include <string>
#include <string_view>

namespace reference
{
// A message as the store holds it.
struct StoredMessage {
    std::string id, stat, da, scts, text;
};

// A stored text in a field of `size` bytes, without its NUL.
std::string message_text(std::string_view stored, size_t size);

// Fills `info`, and leaves the bytes after a text as they were.
void fill_message(cmif_sms_info &info, const StoredMessage &message);
} // namespace reference

#endif
