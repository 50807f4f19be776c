// libcmif-record.so: starts to record when it is loaded into a process that is to be recorded.
#include "environment.h"
#include "hooks.h"

#include <cerrno>
#include <new>

namespace cmif_record
{
namespace
{

Recording *recording = nullptr;

// Never destroyed: threads of the daemon may still send while it exits.
__attribute__((constructor)) void start()
{
    alignas(Recording) static char memory[sizeof(Recording)];
    const int error = errno;
    if (Ring *const ring = ring_from_environment()) {
        recording = new (memory) Recording(ring);
        recording->add_process();
        record_to(*recording);
    }
    errno = error;
}

// So that the recording of a daemon that exits is complete when it has ended, and has what its
// children have done.
__attribute__((destructor)) void end()
{
    if (recording)
        recording->flush();
}

} // namespace
} // namespace cmif_record
