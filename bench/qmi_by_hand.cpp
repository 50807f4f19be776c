#include "qmi_by_hand.h"

#include "cmif/cmif.h"
#include "daemon.h"

#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <sys/msg.h>
#include <sys/time.h>
#include <unistd.h>

namespace bench
{
namespace
{

void log_line(const char *line)
{
    timeval now{};
    gettimeofday(&now, nullptr);
    std::tm local{};
    tzset();
    localtime_r(&now.tv_sec, &local);
    shared_debug_lte_write_log_file("[CMIF-QMI][%02d-%02d_%02d:%02d:%02d:%03d]%s", local.tm_mon + 1,
                                    local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec,
                                    static_cast<int>(now.tv_usec / 1000), line);
}

std::size_t read_file(const char *path, char *out, std::size_t size)
{
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    const ssize_t count = read(file, out, size);
    close(file);
    return count < 0 ? 0 : static_cast<std::size_t>(count);
}

} // namespace

void qmi_exchange_by_hand(bool log)
{
    char name[33] = {}, path[32], state[4] = {};
    std::snprintf(path, sizeof path, "/proc/%d/cmdline", getpid());
    read_file(path, name, sizeof name - 1);
    if (log)
        log_line("[shared_CMIF_get_device_rev_id] called by pid(1) - process name[x]\n");
    read_file(CMIF_QMI_READY_FILE, state, 2);

    qmi_msg record[2] = {};
    record->mtype = CMIF_QMI_GET_DEVICE_REVISION;
    if (log)
        log_line("[cmif_send_to_msgqueue] start...\n");
    const int requests = msgget(CMIF_QMI_REQUEST_KEY, queue_flags);
    const int replies = msgget(CMIF_QMI_REPLY_KEY, queue_flags);
    if (log)
        log_line("[cmif_send_to_msgqueue] key msqID = (0)\n");
    if (log)
        log_line("[cmif_send_to_msgqueue] key msg_recv_ID = (1)\n");
    msgsnd(requests, record, 101, 0);
    if (log)
        log_line("[cmif_send_to_msgqueue] rcv_id = (1)\n");
    msgrcv(replies, record, 316, CMIF_QMI_GET_DEVICE_REVISION, 0);
    if (log)
        log_line("(1) msgrcv succeeed!\n");
    std::printf("%s msgrcv succeeed!\n", "shared_CMIF_get_device_rev_id");
}

} // namespace bench
