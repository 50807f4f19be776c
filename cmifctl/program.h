#ifndef CMIFCTL_PROGRAM_H
#define CMIFCTL_PROGRAM_H

namespace cmifctl
{

// The tool from its command line to its exit status.
int program(int count, char **words);

} // namespace cmifctl

#endif
