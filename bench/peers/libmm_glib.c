/* libmm-glib: a client object of ModemManager, which need not run. */
#include "peer.h"

#include <libmm-glib.h>

static GDBusConnection *bus;

static int start(void)
{
    bus = g_bus_get_sync(G_BUS_TYPE_SESSION, NULL, NULL);
    return bus == NULL;
}

static int call(void)
{
    MMManager *const manager =
        mm_manager_new_sync(bus, G_DBUS_OBJECT_MANAGER_CLIENT_FLAGS_DO_NOT_AUTO_START, NULL, NULL);
    if (!manager)
        return 1;
    g_object_unref(manager);
    return 0;
}

static void stop(void)
{
    g_object_unref(bus);
}

const struct Peer peer = {.start = start, .call = call, .stop = stop};
