// QMI calls: status and small requests.
#include "function_ref.h"
#include "qmi_channel.h"
#include "store.h"

#include <cstdint>
#include <cstdio>
#include <iterator>
#include <sys/ipc.h>
#include <sys/msg.h>

namespace cmif
{
namespace
{

constexpr char auto_connect_key[] = "lte_qmi_auto_connect_when_start_up";

// Asks for an answer and, when it came, lets `take` hand it out before the outcome is printed.
int ask(const char *api, long code, std::size_t length, FunctionRef<void(const QmiRecord &)> take)
{
    if (_check_msg_thread_ready() != 0)
        return CMIF_NOT_READY;
    QmiRecord record(code);
    const int result = cmif_send_to_msgqueue(record, length, static_cast<int>(code));
    if (result != CMIF_OK) {
        std::printf("%s msgrcv failed...\n", api);
        return result;
    }
    take(record);
    std::printf("%s msgrcv succeeed!\n", api);
    return CMIF_OK;
}

// Cut at `bound` bytes, without a NUL when the answer fills them; the rest of them is zero.
void copy_answer(char *out, const char *answer, std::size_t bound)
{
    const std::size_t length = strnlen(answer, bound);
    std::memcpy(out, answer, length);
    std::memset(out + length, 0, bound - length);
}

const char *sim_status_name(std::int32_t status)
{
    static constexpr char names[][28] = {"SIM_ABSENT", "SIM_NOT_READY",
                                         "SIM_READY",  "SIM_PIN",
                                         "SIM_PUK",    "SIM_NETWORK_PERSONALIZATION",
                                         "SIM_BAD"};
    const bool known = status >= 0 && status < static_cast<std::int32_t>(std::size(names));
    return known ? names[status] : "SIM_UNKNOWN";
}

} // namespace
} // namespace cmif

using namespace cmif;

int shared_CMIF_get_device_rev_id(char *out)
{
    static constexpr char api[] = "shared_CMIF_get_device_rev_id";
    cmif_log_caller(api);
    if (!out)
        return CMIF_INVALID;
    return ask(api, 1, 101, [&](const QmiRecord &reply) { copy_answer(out, reply.text(), 100); });
}

int shared_CMIF_get_sim_status(int *status)
{
    static constexpr char api[] = "shared_CMIF_get_sim_status";
    if (!status)
        return CMIF_INVALID;
    return ask(api, 6, 5, [&](const QmiRecord &reply) {
        std::memcpy(status, reply.text(), sizeof *status);
        std::printf("%s : %s\n", api, sim_status_name(*status));
    });
}

int shared_CMIF_get_ps_service(char *out)
{
    static constexpr char api[] = "shared_CMIF_get_ps_service";
    if (!out)
        return CMIF_INVALID;
    return ask(api, 8, 51, [&](const QmiRecord &reply) {
        std::printf("%s : %s\n", api, reply.text());
        copy_answer(out, reply.text(), 50);
    });
}

// Unlike the exchange, doesn't create the queue: the command is for a daemon that is there.
int shared_CMIF_set_CM_qfirehose(void)
{
    static constexpr char api[] = "shared_CMIF_set_CM_qfirehose";
    cmif_log_caller(api);
    const QmiRecord record(9);
    if (_check_msg_thread_ready() != 0)
        return CMIF_NOT_READY;
    const int queue = msgget(CMIF_QMI_REQUEST_KEY, 0666);
    if (queue == -1) {
        std::printf("%s can't get msqID\n", api);
        return CMIF_NO_QUEUE;
    }
    std::printf("%s get msqID = %d\n", api, queue);
    if (msgsnd(queue, &record.message, 5, 0) == -1) {
        std::printf("%s msgsnd failed...\n", api);
        return CMIF_SEND_FAILED;
    }
    return CMIF_OK;
}

int shared_CMIF_get_connection_uptime(unsigned int *uptime)
{
    const StoredText<100> stored("lte_qmi_connection_uptime");
    if (!uptime) {
        std::printf("%s nvram uptime == NULL!\n", "shared_CMIF_get_connection_uptime");
        return CMIF_INVALID;
    }
    *uptime = static_cast<unsigned int>(std::atol(stored.text()));
    return CMIF_OK;
}

int shared_CMIF_get_auto_connect_when_start_up(int *enabled)
{
    if (!enabled)
        return CMIF_INVALID;
    *enabled = StoredText<50>(auto_connect_key).is("on");
    return CMIF_OK;
}

// Stored by "is 1", printed by "is not 0": both are known outside.
int shared_CMIF_set_auto_connect_when_start_up(int enabled)
{
    tarnNvramConfig_set(auto_connect_key, enabled == 1 ? "on" : "off");
    tarnNvramConfig_save();
    std::printf("%s %s=%s save to nvram\n", "shared_CMIF_set_auto_connect_when_start_up",
                auto_connect_key, enabled == 0 ? "off" : "on");
    return CMIF_OK;
}
