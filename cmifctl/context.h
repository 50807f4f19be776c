// What a verb works with: its arguments, the options for calls, and the report that it fills.
#ifndef CMIFCTL_CONTEXT_H
#define CMIFCTL_CONTEXT_H

#include "cli/arguments.h"
#include "client/call.h"
#include "cmifctl/output/enums.h"
#include "cmifctl/output/format.h"
#include "cmifctl/output/report.h"

namespace cmifctl
{

using cli::Arguments;
using client::CallOptions;

struct Context {
    OutputOptions output;
    CallOptions options;
    Arguments arguments;
    Report report;
    client::Exit status = client::Exit::done; // of the program, after the report
};

} // namespace cmifctl

#endif
