// The saved configuration: saved.conf in the store's directory.
#ifndef PLATFORM_SAVED_FILE_H
#define PLATFORM_SAVED_FILE_H

#include "saved_text.h"

namespace host_store
{

class DirectoryLock;

// What the file contains; nothing if there is none. What can't be read is reported and skipped.
Entries load_saved();

// Replaces the file, atomically and durably. A file that can't be read completely is first kept
// under another name. False after reporting why not: the file is then as it was.
bool save(const DirectoryLock &directory, const Entries &entries);

} // namespace host_store

#endif
