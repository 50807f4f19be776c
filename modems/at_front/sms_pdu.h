// Short messages as protocol data units (3GPP TS 23.040): those received, and those to send.
#ifndef MODEMS_AT_FRONT_SMS_PDU_H
#define MODEMS_AT_FRONT_SMS_PDU_H

#include "daemons/modem_status.h"
#include "sms_coding.h"

namespace at_front
{

struct Pdu {
    std::string digits; // hexadecimal, with the service centre's address in front
    int length = 0;     // octets after that address
};

// A received message, in as many PDUs as its text needs. They carry `reference` if there are
// several.
std::vector<Pdu> deliver_pdus(const daemons::Message &message, int reference);

struct Submitted {
    std::string recipient; // "+12025550100"
    std::string text;
};

// What a PDU sends that was announced with `length`. Nothing if it is malformed.
std::optional<Submitted> parse_submit(std::string_view digits, int length);

} // namespace at_front

#endif
