// QMI calls: status and small requests.
#include "array_size.h"
#include "function_ref.h"
#include "qmi_channel.h"
#include "store.h"

#include <cstdint>
#include <cstdio>
#include <sys/ipc.h>
#include <sys/msg.h>

namespace cmif
{
namespace
{

constexpr char auto_connect_key[] = "lte_qmi_auto_connect_when_start_up";

// Asks the daemon. `read_answer` gets the reply and runs before the line of success.
int query_daemon(const char *api, cmif_qmi_code code, std::size_t length,
                 FunctionRef<void(const char *)> read_answer)
{
    if (_check_msg_thread_ready() != 0)
        return CMIF_NOT_READY;
    QmiRecord record(code);
    const int result = cmif_send_to_msgqueue(record, length, code);
    if (result != CMIF_OK) {
        std::printf("%s msgrcv failed...\n", api);
        return result;
    }
    read_answer(record.text());
    std::printf("%s msgrcv succeeed!\n", api);
    return CMIF_OK;
}

// Fills all of `bound` bytes: cut there, without a NUL, or padded with zeros.
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
    const bool known = status >= 0 && status < static_cast<std::int32_t>(array_size(names));
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
    return query_daemon(api, CMIF_QMI_GET_DEVICE_REVISION, 101,
                        [&](const char *answer) { copy_answer(out, answer, 100); });
}

int shared_CMIF_get_sim_status(int *status)
{
    static constexpr char api[] = "shared_CMIF_get_sim_status";
    if (!status)
        return CMIF_INVALID;
    return query_daemon(api, CMIF_QMI_GET_SIM_STATUS, 5, [&](const char *answer) {
        std::memcpy(status, answer, sizeof *status);
        std::printf("%s : %s\n", api, sim_status_name(*status));
    });
}

int shared_CMIF_get_ps_service(char *out)
{
    static constexpr char api[] = "shared_CMIF_get_ps_service";
    if (!out)
        return CMIF_INVALID;
    return query_daemon(api, CMIF_QMI_GET_PACKET_SERVICE, 51, [&](const char *answer) {
        std::printf("%s : %s\n", api, answer);
        copy_answer(out, answer, 50);
    });
}

// Unlike the exchange, doesn't create the queue: the command is meant for a daemon that runs.
int shared_CMIF_set_CM_qfirehose(void)
{
    static constexpr char api[] = "shared_CMIF_set_CM_qfirehose";
    cmif_log_caller(api);
    const QmiRecord record(CMIF_QMI_DOWNLOAD_MODE);
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

// "on" is stored for 1 alone but printed for any number except 0: readers depend on both.
int shared_CMIF_set_auto_connect_when_start_up(int enabled)
{
    tarnNvramConfig_set(auto_connect_key, enabled == 1 ? "on" : "off");
    tarnNvramConfig_save();
    std::printf("%s %s=%s save to nvram\n", "shared_CMIF_set_auto_connect_when_start_up",
                auto_connect_key, enabled == 0 ? "off" : "on");
    return CMIF_OK;
}
