// PIN entry, the example where one request is enough, and its lines with the trace on.
#ifndef TESTS_SUPPORT_ENTER_PIN_H
#define TESTS_SUPPORT_ENTER_PIN_H

#include "cmif/cmif.h"
#include "queue_pair.h"

#include <string>

inline int enter_pin()
{
    return shared_CMIF_set_EntermobilePIN("1234");
}

inline const std::string pin_sent = "set_string=1234\n"
                                    "cmif_common:shared_CMIF_set_EntermobilePIN msgsnd success\n";
inline const std::string pin_received = "cmif: shared_CMIF_set_EntermobilePIN msgrcv success\n";
inline const std::string pin_receive_failed =
    "cmif: shared_CMIF_set_EntermobilePIN msgrcv failed\n";

inline std::string pin_asked(const QueuePair &queues)
{
    return "key msqid=" + std::to_string(queues.requests()) + "\ntype mod_id=12\n" + pin_sent;
}

#endif
