// Files in /tmp that every program may read.
#ifndef DAEMONS_PUBLISH_PUBLIC_FILE_H
#define DAEMONS_PUBLISH_PUBLIC_FILE_H

#include <string>

namespace daemons
{

// Replaced atomically; false, and a line on standard error, when it can't be written.
bool write_public_file(const char *path, const std::string &text);

} // namespace daemons

#endif
