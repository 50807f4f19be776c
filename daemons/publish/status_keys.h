// The modem, the SIM and the network in the configuration store.
#ifndef DAEMONS_PUBLISH_STATUS_KEYS_H
#define DAEMONS_PUBLISH_STATUS_KEYS_H

#include "daemons/modem_status.h"

namespace daemons
{

// How "lte_operator_select_operator" names the operator (3GPP TS 27.007 <format>).
enum class OperatorFormat { long_name = 0, short_name = 1, numeric = 2 };

// Every key that the status getters and the queries read, but for messages and the data connection.
void publish_status(const ModemStatus &status, OperatorFormat format);

} // namespace daemons

#endif
