/* A method call through the session's D-Bus daemon, both ends by GDBus. */
#include "peer.h"

#include <gio/gio.h>

#define NAME "org.example.GDBus"

static GDBusConnection *bus;

static void answer(GDBusConnection *connection, const gchar *sender, const gchar *path,
                   const gchar *interface, const gchar *method, GVariant *arguments,
                   GDBusMethodInvocation *invocation, gpointer context)
{
    (void)connection, (void)sender, (void)path, (void)interface, (void)method, (void)context;
    g_dbus_method_invocation_return_value(invocation, arguments);
}

static void on_name(GDBusConnection *connection, const gchar *name, gpointer context)
{
    (void)connection, (void)name, (void)context;
    ready();
}

static int start(void)
{
    bus = g_bus_get_sync(G_BUS_TYPE_SESSION, NULL, NULL);
    return bus == NULL;
}

static void serve(void)
{
    static const GDBusInterfaceVTable methods = {.method_call = answer};
    GDBusNodeInfo *const node =
        g_dbus_node_info_new_for_xml("<node><interface name='" NAME "'><method name='Exchange'>"
                                     "<arg type='ay' direction='in'/>"
                                     "<arg type='ay' direction='out'/>"
                                     "</method></interface></node>",
                                     NULL);
    if (start() || g_dbus_connection_register_object(bus, "/", node->interfaces[0], &methods, NULL,
                                                     NULL, NULL) == 0)
        return;
    g_bus_own_name_on_connection(bus, NAME, G_BUS_NAME_OWNER_FLAGS_NONE, on_name, NULL, NULL, NULL);
    g_main_loop_run(g_main_loop_new(NULL, FALSE));
}

static int call(void)
{
    static const char record[record_size];
    GVariant *const bytes = g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, record, record_size, 1);
    GVariant *const reply = g_dbus_connection_call_sync(
        bus, NAME, "/", NAME, "Exchange", g_variant_new_tuple(&bytes, 1), G_VARIANT_TYPE("(ay)"),
        G_DBUS_CALL_FLAGS_NONE, -1, NULL, NULL);
    if (!reply)
        return 1;
    GVariant *const answered = g_variant_get_child_value(reply, 0);
    const int failed = g_variant_get_size(answered) != record_size;
    g_variant_unref(answered);
    g_variant_unref(reply);
    return failed;
}

static void stop(void)
{
    g_object_unref(bus);
}

const struct Peer peer = {serve, start, call, stop};
