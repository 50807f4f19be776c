// The configuration store, for the verbs that are about settings and not about the modem.
#ifndef CMIFCTL_VERBS_SETTINGS_H
#define CMIFCTL_VERBS_SETTINGS_H

#include "cmifctl/calls.h"

#include <string>

namespace cmifctl
{

// In a child: fails when the store can't be read. The library's getters would show it as empty.
void require_store();

// "the daemons use the store A, this command B"; empty when no running daemon has announced
// another store than this process's.
std::string other_store();

// What to do about values that a daemon should have published and that this store doesn't have.
std::string unknown_values_hint();

std::string setting(const Context &context, const std::string &key);
void change_setting(const Context &context, const std::string &key, const std::string &value);
// All keys that are set, with their values.
Json all_settings(const Context &context);
void save_settings(const Context &context);

} // namespace cmifctl

#endif
