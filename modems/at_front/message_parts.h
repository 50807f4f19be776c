// Messages as a terminal sees them: the modem stores a long one under a single index, a terminal
// needs an index for each part. A part is shown as a PDU, or as text (+CMGF).
#ifndef MODEMS_AT_FRONT_MESSAGE_PARTS_H
#define MODEMS_AT_FRONT_MESSAGE_PARTS_H

#include "daemons/modem_status.h"
#include "session.h"

#include <array>
#include <string_view>
#include <vector>

namespace at_front
{

// The first part has the message's own index, each further one that of the part before plus this.
inline constexpr int index_step = 256;

struct Part {
    int index;
    std::string header, content; // the two lines that show it, the first without its index
};

std::vector<Part> parts_of(const daemons::Message &message, const Session &session);

inline bool is_further_part(int index)
{
    return index >= index_step;
}

// What +CMGL chooses by, in PDU mode by number: the two that are received come first.
inline constexpr std::array<std::string_view, 5> message_states = {"REC UNREAD", "REC READ",
                                                                   "STO UNSENT", "STO SENT", "ALL"};
inline std::size_t state_of(const daemons::Message &message)
{
    return message.unread ? 0 : 1;
}

// In the character set of the port, as text mode shows it; and back.
std::string in_character_set(const std::string &utf8, const Session &session);
std::string from_character_set(const std::string &text, const Session &session);

} // namespace at_front

#endif
