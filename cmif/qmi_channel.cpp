#include "qmi_channel.h"

#include "qmi_lines.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/ipc.h>
#include <sys/msg.h>
#include <unistd.h>

namespace cmif
{
namespace
{

constexpr int queue_flags = IPC_CREAT | 0666;
constexpr std::size_t receive_size = 316;
static_assert(offsetof(qmi_msg, payload) == sizeof(long));
static_assert(sizeof(long) != 4 || sizeof(qmi_msg) == receive_size);
static_assert(offsetof(QmiRecord, spare) == sizeof(long) + CMIF_QMI_PAYLOAD);
static_assert(sizeof(QmiRecord) > sizeof(long) + receive_size);

// A file, open while this object lives. A FIFO in its place must not block the caller.
class File
{
public:
    explicit File(const char *path) : descriptor_(open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC)) {}
    ~File()
    {
        if (is_open())
            close(descriptor_);
    }
    File(const File &) = delete;
    File &operator=(const File &) = delete;

    bool is_open() const { return descriptor_ != -1; }
    ssize_t read(char *out, std::size_t size) const { return ::read(descriptor_, out, size); }

private:
    int descriptor_;
};

// The first argument of the process's command line, up to 32 bytes of it.
struct ProcessName {
    explicit ProcessName(int pid)
    {
        char path[32] = {};
        std::snprintf(path, sizeof path, "/proc/%d/cmdline", pid);
        const File file(path);
        if (!file.is_open())
            return;
        const ssize_t count = file.read(text, sizeof text - 1);
        if (count > 0 && text[count - 1] == '\n')
            text[count - 1] = '\0';
    }

    char text[33] = {};
};

} // namespace

int _check_msg_thread_ready()
{
    static constinit QmiSite site;
    const File file(CMIF_QMI_READY_FILE);
    if (!file.is_open())
        return -1;
    char state[4] = {};
    const ssize_t count = file.read(state, 2);
    site.print("[%s] - [%s]\n\n", "_check_msg_thread_ready", state);
    return count == 2 && std::memcmp(state, "on", 2) == 0 ? 0 : -1;
}

int cmif_log_caller(const char *api)
{
    static constinit QmiSite site;
    const int pid = getpid();
    if (pid == 0)
        return 0;
    const ProcessName name(pid);
    site.print("[%s] called by pid(%d) - process name[%s]\n\n", api, pid, name.text);
    return qmi_log("[%s] called by pid(%d) - process name[%s]\n", api, pid, name.text);
}

int cmif_send_to_msgqueue(QmiRecord &record, std::size_t length, int reply_type)
{
    static constexpr char name[] = "cmif_send_to_msgqueue";
    static constinit struct {
        QmiSite start, no_request_queue, no_reply_queue, request_queue, reply_queue, not_sent,
            waiting, not_received, received;
    } sites;

    qmi_trace_and_log(sites.start, "[%s] start...\n", name);
    const int request_queue = msgget(CMIF_QMI_REQUEST_KEY, queue_flags);
    if (request_queue == -1) {
        qmi_trace_and_log(sites.no_request_queue, "[%s] can't get msqID\n", name);
        return CMIF_NO_QUEUE;
    }
    const int reply_queue = msgget(CMIF_QMI_REPLY_KEY, queue_flags);
    if (reply_queue == -1) {
        qmi_trace_and_log(sites.no_reply_queue, "[%s] can't get msqID\n", name);
        return CMIF_NO_QUEUE;
    }
    qmi_trace_and_log(sites.request_queue, "[%s] key msqID = (%d)\n", name, request_queue);
    qmi_trace_and_log(sites.reply_queue, "[%s] key msg_recv_ID = (%d)\n", name, reply_queue);

    if (msgsnd(request_queue, &record.message, length, 0) == -1) {
        // No brackets here: log parsers depend on it.
        qmi_trace_and_log(sites.not_sent, "%s msgsnd failed...\n", name);
        return CMIF_SEND_FAILED;
    }
    qmi_trace_and_log(sites.waiting, "[%s] rcv_id = (%d)\n", name, reply_type);
    if (msgrcv(reply_queue, &record, receive_size, reply_type, 0) == -1) {
        const int error = errno;
        qmi_trace_and_log(sites.not_received, "(%d) msgrcv failed...\n", reply_type);
        errno = error;
        std::perror("msgrcv");
        return CMIF_RECEIVE_FAILED;
    }
    qmi_trace_and_log(sites.received, "(%d) msgrcv succeeed!\n", reply_type);
    return CMIF_OK;
}

} // namespace cmif
