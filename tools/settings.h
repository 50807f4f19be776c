// The configuration store itself, for the verbs that are about settings and not about the modem.
#ifndef TOOLS_SETTINGS_H
#define TOOLS_SETTINGS_H

#include "invocation.h"

#include <string>

namespace cmifctl
{

std::string setting(const Invocation &run, const std::string &key);
void change_setting(const Invocation &run, const std::string &key, const std::string &value);
/// All keys that are set, with their values.
Json all_settings(const Invocation &run);
void save_settings(const Invocation &run);

} // namespace cmifctl

#endif
