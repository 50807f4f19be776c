/* A method call through the session's D-Bus daemon, both ends by libdbus. */
#include "peer.h"

#include <dbus/dbus.h>

#define NAME "org.example.LibDBus"

static DBusConnection *bus;

static dbus_bool_t append(DBusMessage *message, const unsigned char *record)
{
    return dbus_message_append_args(message, DBUS_TYPE_ARRAY, DBUS_TYPE_BYTE, &record, record_size,
                                    DBUS_TYPE_INVALID);
}

/* The record in a message; null if there is none of the right size. */
static const unsigned char *record_of(DBusMessage *message)
{
    const unsigned char *record = 0;
    int size = 0;
    if (!dbus_message_get_args(message, 0, DBUS_TYPE_ARRAY, DBUS_TYPE_BYTE, &record, &size,
                               DBUS_TYPE_INVALID))
        return 0;
    return size == record_size ? record : 0;
}

static DBusHandlerResult answer(DBusConnection *connection, DBusMessage *request, void *context)
{
    const unsigned char *const record = record_of(request);
    DBusMessage *const reply = record ? dbus_message_new_method_return(request) : 0;
    (void)context;
    if (!reply)
        return DBUS_HANDLER_RESULT_NOT_YET_HANDLED;
    if (append(reply, record))
        dbus_connection_send(connection, reply, 0);
    dbus_message_unref(reply);
    return DBUS_HANDLER_RESULT_HANDLED;
}

static int start(void)
{
    bus = dbus_bus_get(DBUS_BUS_SESSION, 0);
    return bus == 0;
}

static void serve(void)
{
    static const DBusObjectPathVTable methods = {.message_function = answer};
    if (start() || !dbus_connection_register_object_path(bus, "/", &methods, 0) ||
        dbus_bus_request_name(bus, NAME, 0, 0) == -1)
        return;
    ready();
    while (dbus_connection_read_write_dispatch(bus, -1)) {}
}

static int call(void)
{
    static const unsigned char record[record_size];
    DBusMessage *const request = dbus_message_new_method_call(NAME, "/", NAME, "Exchange");
    DBusMessage *reply = 0;
    int failed = 1;
    if (request && append(request, record))
        reply = dbus_connection_send_with_reply_and_block(bus, request, -1, 0);
    if (reply) {
        failed = record_of(reply) == 0;
        dbus_message_unref(reply);
    }
    if (request)
        dbus_message_unref(request);
    return failed;
}

static void stop(void)
{
    dbus_connection_unref(bus);
}

const struct Peer peer = {serve, start, call, stop};
