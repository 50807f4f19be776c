// What was saved, in the store's directory: saved.conf.
#ifndef PLATFORM_SAVED_FILE_H
#define PLATFORM_SAVED_FILE_H

#include "saved_text.h"

#include <string>

namespace host_store
{

class DirectoryLock;

// What the file holds; none is an empty one. What can't be read is complained of and left out.
Entries load_saved();

// Replaces the file at one stroke, for good. One that can't be read in full is first set aside
// under another name. False after a complaint: the file is then as it was.
bool save(const DirectoryLock &directory, const Entries &entries);

} // namespace host_store

#endif
