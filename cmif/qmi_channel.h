// The QMI channel: the daemon's readiness, the caller's identity, and one exchange with the daemon.
#ifndef CMIF_QMI_CHANNEL_H
#define CMIF_QMI_CHANNEL_H

#include "cmif.h"

#include <cstddef>

namespace cmif
{

// A zeroed record. The library receives up to 316 bytes, the whole size of a 32-bit record, so the
// payload is followed by room for them and for a NUL that ends any text.
struct QmiRecord {
    explicit QmiRecord(long code) { message.mtype = code; }
    const char *text() const { return message.payload; }

    qmi_msg message{};
    char spare[8] = {};
};

// 0 when the daemon's message thread is ready, else -1.
int _check_msg_thread_ready();

// Writes the caller's process name and ID to the trace and the log; returns the log writer's
// result.
int cmif_log_caller(const char *api);

// Sends `length` bytes of payload and waits for a reply of type `reply_type`. Returns 0, 2, 3 or 4;
// on 0 the record holds the reply.
int cmif_send_to_msgqueue(QmiRecord &record, std::size_t length, int reply_type);

} // namespace cmif

#endif
