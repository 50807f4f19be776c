#include "channel.h"

#include "cmif/cmif.h"
#include "daemons/publish/public_file.h"

#include <cerrno>
#include <cstring>
#include <sys/msg.h>
#include <system_error>
#include <unistd.h>

namespace cmif_sim
{

const ChannelNames &names_of(Channel channel)
{
    // clang-format off
    static constexpr ChannelNames at{"at", "AT", "cmif-at-daemon", CMIF_AT_REQUEST_KEY, CMIF_AT_REPLY_KEY, CMIF_AT_PAYLOAD};
    static constexpr ChannelNames qmi{"qmi", "QMI", "cmif-qmi-daemon", CMIF_QMI_REQUEST_KEY, CMIF_QMI_REPLY_KEY, CMIF_QMI_PAYLOAD};
    // clang-format on
    return channel == Channel::at ? at : qmi;
}

std::string record_of(long code, const std::string &payload)
{
    std::string bytes(sizeof code, '\0');
    std::memcpy(bytes.data(), &code, sizeof code);
    return bytes + payload;
}

void set_ready(Channel channel, bool ready)
{
    if (channel == Channel::at)
        return;
    if (ready)
        daemons::write_public_file(CMIF_QMI_READY_FILE, "on\n");
    else
        unlink(CMIF_QMI_READY_FILE);
}

bool is_ready(Channel channel)
{
    return channel == Channel::at || access(CMIF_QMI_READY_FILE, F_OK) == 0;
}

void remove_queue(key_t key)
{
    const int queue = msgget(key, 0);
    if (queue == -1 || msgctl(queue, IPC_RMID, nullptr) != 0)
        throw std::system_error(errno, std::generic_category(),
                                "can't remove message queue " + std::to_string(key));
}

void put_replies(Channel channel, long code, int count)
{
    const ChannelNames &names = names_of(channel);
    const std::string record = record_of(code, std::string(names.payload, '\0'));
    const int queue = msgget(names.replies, IPC_CREAT | 0666);
    while (count-- > 0 && msgsnd(queue, record.data(), names.payload, IPC_NOWAIT) == 0) {}
}

} // namespace cmif_sim
