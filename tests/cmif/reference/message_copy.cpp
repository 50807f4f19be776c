#include "message_copy.h"

#include <cstdlib>
#include <cstring>

namespace
{
template <size_t size>
void put(char (&field)[size], const std::string &stored)
{
    const std::string text = reference::message_text(stored, size);
    memcpy(field, text.c_str(), text.size() + 1);
}
} // namespace

// "%%" shrinks first, then the text is cut.
std::string reference::message_text(std::string_view stored, size_t size)
{
    std::string text;
    for (size_t i = 0; i < stored.size(); ++i) {
        text += stored[i];
        if (stored.substr(i, 2) == "%%")
            ++i;
    }
    return text.substr(0, size - 1);
}

void reference::fill_message(cmif_sms_info &info, const StoredMessage &message)
{
    info.id = atoi(message.id.c_str());
    info.stat = message.stat == "REC UNREAD" ? 0 : 1;
    put(info.da, message.da);
    put(info.scts, message.scts);
    put(info.text, message.text);
}
