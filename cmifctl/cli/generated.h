// Verbs that print what is generated from the command table.
#ifndef CMIFCTL_CLI_GENERATED_H
#define CMIFCTL_CLI_GENERATED_H

#include "cmifctl/context.h"

namespace cmifctl
{

void print_completion(Context &context);
void print_candidates(Context &context);
void print_manual(Context &context);

} // namespace cmifctl

#endif
