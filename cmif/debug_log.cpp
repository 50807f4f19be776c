// The debug log: messages are collected in a small buffer and appended to the file in blocks.
#include "debug_log.h"

#include "cmif.h"
#include "tarn_nvram_config.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <semaphore.h>
#include <unistd.h>

namespace cmif
{

constinit int g_debug_lte_enable = 0;

namespace
{

sem_t g_mutex_write_log; // guards the pending text
std::size_t pending_length;
char pending[128];

class Lock
{
public:
    Lock()
    {
        while (sem_wait(&g_mutex_write_log) == -1 && errno == EINTR) {}
    }
    ~Lock() { sem_post(&g_mutex_write_log); }
    Lock(const Lock &) = delete;
    Lock &operator=(const Lock &) = delete;
};

// Appends with a single write. When the file can't be opened, the block is lost.
void append_to_file(const char *block, std::size_t length)
{
    const int file = open(CMIF_LOG_FILE, O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    if (file == -1)
        return;
    [[maybe_unused]] const ssize_t written = write(file, block, length);
    close(file);
}

void flush()
{
    append_to_file(pending, pending_length);
    std::memset(pending, 0, sizeof pending);
    pending_length = 0;
}

void append(const char *message, std::size_t length)
{
    if (length + pending_length > sizeof pending - 1)
        flush();
    if (length > sizeof pending) { // never fits: written after the pending text, in order
        append_to_file(message, length);
        return;
    }
    std::memcpy(pending + pending_length, message, length);
    pending_length += length;
}

// Runs one shell command of the rotation after a line that announces it with its number.
[[gnu::format(printf, 2, 3)]] int run_rotation_step(int number, const char *format, ...)
{
    char command[64] = {};
    std::va_list values;
    va_start(values, format);
    std::vsnprintf(command, sizeof command, format, values);
    va_end(values);
    std::printf("[debug_lte] sys_cmd[%d]='%s'\n", number, command);
    return std::system(command);
}

} // namespace
} // namespace cmif

using namespace cmif;

int shared_debug_lte_mutex_init(void)
{
    g_debug_lte_enable = std::atoi(tarnNvramConfig_get("debug_lte_enable"));
    std::printf("[debug_lte] %s g_debug_lte_enable=%d g_mutex_write_log=0x%p\n",
                "shared_debug_lte_mutex_init", g_debug_lte_enable,
                static_cast<void *>(&g_mutex_write_log));
    return g_debug_lte_enable ? sem_init(&g_mutex_write_log, 0, 1) : 0;
}

// Pending text is not flushed: the last block of a process is not part of its log.
int shared_debug_lte_mutex_deinit(void)
{
    if (!g_debug_lte_enable)
        return 0;
    std::printf("[debug_lte] %s g_mutex_write_log=0x%p\n", "shared_debug_lte_mutex_deinit",
                static_cast<void *>(&g_mutex_write_log));
    return sem_destroy(&g_mutex_write_log);
}

int shared_debug_lte_write_log_file(const char *format, ...)
{
    if (!g_debug_lte_enable)
        return 0;
    const Lock lock;
    char message[256] = {};
    std::va_list values;
    va_start(values, format);
    std::vsnprintf(message, sizeof message, format, values);
    va_end(values);
    append(message, std::strlen(message));
    return 0;
}

int shared_debug_lte_backup_log_file(void)
{
    std::printf("[debug_lte] %s\n", "shared_debug_lte_backup_log_file");
    run_rotation_step(1, "rm %s", CMIF_LOG_FILE_2);
    run_rotation_step(2, "mv %s %s", CMIF_LOG_FILE_1, CMIF_LOG_FILE_2);
    run_rotation_step(3, "mv %s %s", CMIF_LOG_FILE, CMIF_LOG_FILE_1);
    return run_rotation_step(4, "date > %s", CMIF_LOG_FILE);
}
