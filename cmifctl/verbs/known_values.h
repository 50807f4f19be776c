// Values that arguments may have now, for completion: from the store and the provider list, without
// asking a daemon. Empty when they can't be read.
#ifndef CMIFCTL_VERBS_KNOWN_VALUES_H
#define CMIFCTL_VERBS_KNOWN_VALUES_H

#include "cli/table.h"

namespace cmifctl
{

// Indexes of the messages, as the daemon last listed them.
std::vector<cli::Candidate> known_messages();
// Codes of the operators that the last search found.
std::vector<cli::Candidate> known_operators();
std::vector<cli::Candidate> known_settings();

} // namespace cmifctl

#endif
