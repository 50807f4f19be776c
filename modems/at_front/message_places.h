// Where messages lie as a terminal sees them: the modem stores a long one in a single place, PDUs
// need one for each part.
#ifndef MODEMS_AT_FRONT_MESSAGE_PLACES_H
#define MODEMS_AT_FRONT_MESSAGE_PLACES_H

#include "sms_pdu.h"

namespace at_front
{

// The first part has the message's own place, each further one that of the part before plus this.
inline constexpr int place_step = 256;

struct PlacedPdu {
    int place;
    Pdu pdu;
};

std::vector<PlacedPdu> places_of(const daemons::Message &message);

inline bool is_further_part(int place)
{
    return place >= place_step;
}

// 0 for a message that was received and not read, 1 for one that was.
inline int status_of(const daemons::Message &message)
{
    return message.unread ? 0 : 1;
}

} // namespace at_front

#endif
