// The file in which a search for operators leaves its list.
#ifndef DAEMONS_PUBLISH_PROVIDER_FILE_H
#define DAEMONS_PUBLISH_PROVIDER_FILE_H

#include <string>

namespace sim
{

// At one stroke for its readers; false, and a line on standard error, when it can't be written.
bool write_provider_file(const std::string &list);
void remove_provider_file();

} // namespace sim

#endif
