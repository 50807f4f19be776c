// All values that getters give, as rows: section, name, form.
#ifndef CMIFCTL_VERBS_READINGS_H
#define CMIFCTL_VERBS_READINGS_H

#include "cmifctl/calls.h"

#include <initializer_list>
#include <string_view>

namespace cmifctl
{

// Reports the named sections ("modem", "sim", "network", "last_known", "radio", "data"). Reads the
// store in one child and asks no daemon.
void report_readings(Context &context, std::initializer_list<std::string_view> sections);

// Reports the wireless broadband summary in the same way.
void report_summary(Context &context);

// For bodies: stores the text that a getter gives in `output`, or null when it is empty or the
// getter fails. Returns the getter's result.
int read_text(Json &output, int (*getter)(char *));

} // namespace cmifctl

#endif
