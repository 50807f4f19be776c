/* libqmi-glib: its device type, and a request for the device's revision, built but not sent. */
#include "peer.h"

#include <libqmi-glib.h>

static int start(void)
{
    return g_type_class_ref(QMI_TYPE_DEVICE) == NULL;
}

static int call(void)
{
    QmiMessage *const request = qmi_message_new(QMI_SERVICE_DMS, 1, 1, 0x0023);
    if (!request)
        return 1;
    qmi_message_unref(request);
    return 0;
}

const struct Peer peer = {.start = start, .call = call};
