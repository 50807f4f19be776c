// The operators that the last search found.
#ifndef CMIFCTL_VERBS_PROVIDERS_H
#define CMIFCTL_VERBS_PROVIDERS_H

#include "cmifctl/context.h"

namespace cmifctl
{

// Fails with exit 6 when there is no provider list, with 1 when it can't be read.
void report_providers(Context &context);

} // namespace cmifctl

#endif
