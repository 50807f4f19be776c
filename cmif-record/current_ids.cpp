#include "current_ids.h"

#include <atomic>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace cmif_record
{
namespace
{

// A page that the system clears in a child, however that is forked. Null where it can't.
std::atomic<int> *page_of_process()
{
    constexpr std::size_t size = 4096;
    void *page = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (page == MAP_FAILED || madvise(page, size, MADV_WIPEONFORK) != 0)
        return nullptr;
    return static_cast<std::atomic<int> *>(page);
}

int own_process()
{
    static std::atomic<int> *const kept = page_of_process();
    int process = kept ? kept->load() : 0;
    if (process == 0) {
        process = getpid();
        if (kept)
            kept->store(process);
    }
    return process;
}

} // namespace

CurrentIds current_ids()
{
    thread_local CurrentIds kept{0, 0};
    const int process = own_process();
    if (kept.process != process)
        kept = {process, static_cast<int>(syscall(SYS_gettid))};
    return kept;
}

} // namespace cmif_record
