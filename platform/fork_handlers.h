// Handlers that run around a fork.
#ifndef PLATFORM_FORK_HANDLERS_H
#define PLATFORM_FORK_HANDLERS_H

namespace host_store
{

// Registers them, any of which may be null. To be called when the library is loaded: a fork runs
// only the handlers that were registered before it began.
void register_fork_handlers(void (*before)(), void (*in_parent)(), void (*in_child)());

} // namespace host_store

#endif
