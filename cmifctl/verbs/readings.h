// Everything that the getters know, as rows: where it is shown, under which name, in which form.
#ifndef CMIFCTL_VERBS_READINGS_H
#define CMIFCTL_VERBS_READINGS_H

#include "cmifctl/context.h"

#include <initializer_list>
#include <string_view>

namespace cmifctl
{

// Reads the named sections ("modem", "sim", "network", "last_known", "radio", "data") from the
// store, in one child, and puts them into the report. Asks no daemon.
void report_readings(Invocation &run, std::initializer_list<std::string_view> sections);

// The wireless broadband summary, likewise.
void report_summary(Invocation &run);

// For bodies: leaves the text that a getter gives in `output`, null when it is empty or an error;
// the getter's result.
int read_text(Json &output, int (*getter)(char *));

} // namespace cmifctl

#endif
