/* A method call through the session's D-Bus daemon, both ends by sd-bus. */
#include "peer.h"

#include <systemd/sd-bus.h>

#define NAME "org.example.SdBus"

static sd_bus *bus;

static int reply_record(sd_bus_message *request, sd_bus_message *reply)
{
    const void *record;
    size_t size;
    const int result = sd_bus_message_read_array(request, 'y', &record, &size);
    return result < 0 ? result : sd_bus_message_append_array(reply, 'y', record, size);
}

static int exchange(sd_bus_message *request, void *context, sd_bus_error *error)
{
    sd_bus_message *reply = 0;
    int result = sd_bus_message_new_method_return(request, &reply);
    (void)context;
    (void)error;
    if (result >= 0)
        result = reply_record(request, reply);
    if (result >= 0)
        result = sd_bus_send(0, reply, 0);
    sd_bus_message_unref(reply);
    return result;
}

static const sd_bus_vtable methods[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Exchange", "ay", "ay", exchange, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_VTABLE_END,
};

static int start(void)
{
    return sd_bus_open_user(&bus) < 0;
}

static void serve(void)
{
    int result = start();
    if (result || sd_bus_add_object_vtable(bus, 0, "/", NAME, methods, 0) < 0 ||
        sd_bus_request_name(bus, NAME, 0) < 0)
        return;
    ready();
    while (result >= 0) {
        result = sd_bus_process(bus, 0);
        if (result == 0)
            result = sd_bus_wait(bus, UINT64_MAX);
    }
}

static int call(void)
{
    static const char record[record_size];
    sd_bus_message *request = 0, *reply = 0;
    const void *answer;
    size_t size = 0;
    int result = sd_bus_message_new_method_call(bus, &request, NAME, "/", NAME, "Exchange");
    if (result >= 0)
        result = sd_bus_message_append_array(request, 'y', record, sizeof record);
    if (result >= 0)
        result = sd_bus_call(bus, request, 0, 0, &reply);
    if (result >= 0)
        result = sd_bus_message_read_array(reply, 'y', &answer, &size);
    sd_bus_message_unref(request);
    sd_bus_message_unref(reply);
    return result < 0 || size != record_size;
}

static void stop(void)
{
    sd_bus_flush_close_unref(bus);
}

const struct Peer peer = {serve, start, call, stop};
