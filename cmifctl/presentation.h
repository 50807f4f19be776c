// A command's result or failure, written in the format that was asked for.
#ifndef CMIFCTL_PRESENTATION_H
#define CMIFCTL_PRESENTATION_H

#include "context.h"

#include <string>

namespace cmifctl
{

// The version of the documents' form. It grows when a member is renamed, removed or gets another
// meaning; new members may come without a new version.
constexpr int document_version = 1;

// {"version", "command", and the members}; no command when the command line was not understood.
Json document(const std::string &command, const Json &members);

// Of the report, for standard output.
std::string rendered(const Context &context, const std::string &command);

// On standard error, or as a document on standard output.
void print_failure(const Failure &failure, const std::string &command, const OutputOptions &output);

} // namespace cmifctl

#endif
