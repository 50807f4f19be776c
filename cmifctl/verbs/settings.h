// The configuration store, for the verbs that are about settings and not about the modem.
#ifndef CMIFCTL_VERBS_SETTINGS_H
#define CMIFCTL_VERBS_SETTINGS_H

#include "cmifctl/calls.h"

#include <string>

namespace cmifctl
{

std::string setting(const Context &context, const std::string &key);
// Changing and saving fail while the daemons use another store: they would read none of it.
void change_setting(const Context &context, const std::string &key, const std::string &value);
// All keys that are set, with their values.
Json all_settings(const Context &context);
void save_settings(const Context &context);

} // namespace cmifctl

#endif
