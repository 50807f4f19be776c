#include "fork_handlers.h"

#include "error_report.h"

#include <cstring>
#include <pthread.h>

namespace host_store
{

void register_fork_handlers(void (*before)(), void (*in_parent)(), void (*in_child)())
{
    const int result = pthread_atfork(before, in_parent, in_child);
    if (result != 0)
        report_error("pthread_atfork", std::strerror(result), "do not fork while using the store");
}

} // namespace host_store
