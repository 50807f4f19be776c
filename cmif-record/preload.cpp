// libcmif-record.so: starts to record when it is loaded into a process that is to be recorded.
#include "environment.h"
#include "hooks.h"

#include <exception>
#include <new>

namespace cmif_record
{
namespace
{

// Never destroyed: threads of the daemon may still send while it exits.
__attribute__((constructor)) void start()
try {
    alignas(Recording) static char memory[sizeof(Recording)];
    if (auto settings = settings_from_environment()) {
        auto *recording = new (memory) Recording(*std::move(settings));
        recording->add_process();
        record_to(*recording);
    }
} catch (const std::exception &) { // no memory: the daemon runs all the same
}

} // namespace
} // namespace cmif_record
