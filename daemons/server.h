// What every program needs that serves the queues until it is ended.
#ifndef DAEMONS_SERVER_H
#define DAEMONS_SERVER_H

#include <csignal>
#include <string>

namespace daemons
{

// SIGTERM and SIGINT, blocked in all threads from now on, to be waited for. They count even where a
// shell had them ignored for a background job. SIGPIPE is ignored.
sigset_t block_termination_signals();

// Creates the store's directory if it is missing. False when it can't be used, or is a symbolic
// link: the store reports that itself.
bool has_store_directory(const std::string &store);

} // namespace daemons

#endif
