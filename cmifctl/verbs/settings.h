// The configuration store itself, for the verbs that are about settings and not about the modem.
#ifndef CMIFCTL_VERBS_SETTINGS_H
#define CMIFCTL_VERBS_SETTINGS_H

#include "cmifctl/context.h"

#include <string>

namespace cmifctl
{

// In a child: fails when the store can't be read, which its getters don't tell from an empty one.
void require_store();

std::string setting(const Invocation &run, const std::string &key);
void change_setting(const Invocation &run, const std::string &key, const std::string &value);
// All keys that are set, with their values.
Json all_settings(const Invocation &run);
void save_settings(const Invocation &run);

} // namespace cmifctl

#endif
