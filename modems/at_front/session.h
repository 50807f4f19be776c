// What one port has been told about how to answer and what to report.
#ifndef MODEMS_AT_FRONT_SESSION_H
#define MODEMS_AT_FRONT_SESSION_H

#include <string>

namespace at_front
{

struct Session {
    bool echo = true;
    bool verbose = true;
    bool quiet = false;
    int error_mode = 0; // +CMEE: 0 ERROR alone, 1 numbers, 2 texts

    // How much is reported of the registration with circuits, packets and LTE (+CREG and so on).
    int creg = 0, cgreg = 0, cereg = 0;
    int indicators = 0;       // +CMER: 1 reports changes by +CIEV
    int packet_events = 0;    // +CGEREP: 1, 2 report them by +CGEV
    int new_messages[5] = {}; // +CNMI: with 1 in the second field, by +CMTI
    int message_service = 0;  // +CSMS

    int operator_format = 0; // +COPS: 0 long name, 1 short name, 2 number
    std::string character_set = "IRA";
    bool time_zone_reports = false; // +CTZR
    bool time_zone_update = true;   // +CTZU

    bool text_mode = false;        // +CMGF: messages as text, not as PDUs
    int message_length = 0;        // of a PDU, announced to +CMGS
    std::string message_recipient; // of a text
};

} // namespace at_front

#endif
