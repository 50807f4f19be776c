// The QMI channel: readiness, who calls, and one exchange with the daemon.
#ifndef CMIF_QMI_CHANNEL_H
#define CMIF_QMI_CHANNEL_H

#include "cmif.h"

#include <cstddef>

namespace cmif
{

// A record, zeroed. The receive is posted with 316 bytes, the 32-bit record's whole size, so the
// payload is followed by room for what a daemon may send beyond it; a NUL ends any text.
struct QmiRecord {
    explicit QmiRecord(long code) { message.mtype = code; }
    const char *text() const { return message.payload; }

    qmi_msg message{};
    char spare[8] = {};
};

// 0 when the daemon's message thread is ready, else -1.
int _check_msg_thread_ready();

// Writes the caller's name and process to the trace and the log; the log writer's result.
int cmif_log_caller(const char *api);

// Sends `length` bytes of payload and waits for the reply of `reply_type`: 0, 2, 3 or 4. On 0 the
// record holds the reply.
int cmif_send_to_msgqueue(QmiRecord &record, std::size_t length, int reply_type);

} // namespace cmif

#endif
