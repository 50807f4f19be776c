#include "message_places.h"

namespace at_front
{

std::vector<PlacedPdu> places_of(const daemons::Message &message)
{
    std::vector<PlacedPdu> placed;
    int place = message.index;
    for (Pdu &pdu : deliver_pdus(message, message.index)) {
        placed.push_back({place, std::move(pdu)});
        place += place_step;
    }
    return placed;
}

} // namespace at_front
