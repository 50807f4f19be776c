// Files in /tmp that the daemons leave for everybody to read.
#ifndef DAEMONS_PUBLISH_PUBLIC_FILE_H
#define DAEMONS_PUBLISH_PUBLIC_FILE_H

#include <string>

namespace sim
{

// At one stroke for its readers; false, and a line on standard error, when it can't be written.
bool write_public_file(const char *path, const std::string &text);

} // namespace sim

#endif
