// The values that the daemons publish in the store.
#ifndef CMIFCTL_VERBS_READINGS_H
#define CMIFCTL_VERBS_READINGS_H

#include "cmifctl/calls.h"

#include <initializer_list>
#include <string_view>

namespace cmifctl
{

// Reports the named sections ("modem", "sim", "network", "last_known", "radio", "data"). Reads the
// store in one child and asks no daemon. What has no value there is null. When the daemons use
// another store, all is null, and a note names both. Whether any value is known.
bool report_readings(Context &context, std::initializer_list<std::string_view> sections);
// Only one of them. People are told when it isn't known.
void report_reading(Context &context, std::string_view section, std::string_view key);

// For bodies: stores the text that a getter gives in `output`, or null when it is empty or the
// getter fails. Returns the getter's result.
int read_text(Json &output, int (*getter)(char *));

} // namespace cmifctl

#endif
