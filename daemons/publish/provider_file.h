// The file in which a search for operators leaves its list.
#ifndef DAEMONS_PUBLISH_PROVIDER_FILE_H
#define DAEMONS_PUBLISH_PROVIDER_FILE_H

#include "daemons/modem_status.h"

namespace daemons
{

// The operators in the form of the answer to AT+COPS=?.
std::string provider_list(const std::vector<Operator> &operators);

// Replaced atomically; false, and a line on standard error, when it can't be written.
bool write_provider_file(const std::vector<Operator> &operators);
void remove_provider_file();

} // namespace daemons

#endif
