// The store in which the daemons publish: whether this process reads that one, and what is set.
#ifndef CMIFCTL_VERBS_STORE_H
#define CMIFCTL_VERBS_STORE_H

#include "cmifctl/calls.h"

#include <string>

namespace cmifctl
{

// Whether the store is a platform's: it can't be listed, and where it is can't be told. The system
// has only one.
bool is_platforms_store();

// "the daemons use the store A, and this command B"; empty when no running daemon has announced
// another store than this process's.
std::string other_store();

// In a child: fails when the store can't be read. The library's getters would show it as empty.
void require_store();

// In a child: fails when the store can't be read, or is not the one that the daemons use.
void require_daemons_store();

// A body that reads or changes what the daemons keep in their store: in any other store it fails
// before it does anything.
Body in_daemons_store(Body body);

// In a child, after one of these: a key that isn't set reads as "" or 0.
bool is_stored(const char *key);

// An AT request whose outputs the daemon publishes in its store.
Json at_reading(const Context &context, Call call);

// The outputs of a call that asks no daemon and reads what they publish: an object or a list. While
// they use another store, each is null, and a note names both.
Json read_published(const Context &context, Call call);

// In the section "store": this process's directory, the one that the daemons use, and the time
// since a value changed. That is unknown when no value `is_known`: the command itself may have made
// the store.
void report_store(Report &report, bool is_known);

// Fails unless a step of the store's succeeded; it has written the reason to standard error.
void check_store(int result, const std::string &what);

} // namespace cmifctl

#endif
