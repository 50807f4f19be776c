#include "bus.h"

#include "names.h"

#include <cstdio>
#include <err.h>

namespace modem_manager
{
namespace
{

constexpr guint retry_seconds = 1;

void on_signal(GDBusConnection *, const gchar *, const gchar *path, const gchar *interface,
               const gchar *member, GVariant *arguments, gpointer handlers)
{
    static_cast<Bus::Handlers *>(handlers)->signalled(
        {path, interface, member, Value(g_variant_ref(arguments))});
}

void attach(GSource *source, GMainContext *context, GSourceFunc action, gpointer data)
{
    const SourcePtr owned(source);
    g_source_set_callback(owned.get(), action, data, nullptr);
    g_source_attach(owned.get(), context);
}

std::string system_bus()
{
    GError *error = nullptr;
    const TextPtr address(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, nullptr, &error));
    g_clear_error(&error);
    return address ? address.get() : "";
}

std::string arguments_text(const Call &call)
{
    if (!call.arguments)
        return "()";
    if (call.secret)
        return "(*)";
    const TextPtr text(g_variant_print(call.arguments.get(), FALSE));
    return text.get();
}

} // namespace

// A call while it is in progress: what ends it, where others find it.
class Bus::Progress
{
public:
    Progress(Bus &bus, const Call &call) : bus_(bus)
    {
        const std::lock_guard lock(bus_.mutex_);
        entry_ =
            bus_.in_progress_.emplace(bus_.in_progress_.end(), call.method, g_cancellable_new());
        if (bus_.stopped_)
            g_cancellable_cancel(cancellable());
    }
    ~Progress()
    {
        const std::lock_guard lock(bus_.mutex_);
        bus_.in_progress_.erase(entry_);
    }
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    GCancellable *cancellable() const { return entry_->second.get(); }

private:
    Bus &bus_;
    Cancellables::iterator entry_;
};

Bus::Bus(std::string address, bool verbose, Handlers handlers)
    : address_(std::move(address)), verbose_(verbose), handlers_(std::move(handlers)),
      context_(g_main_context_new()), loop_(g_main_loop_new(context_.get(), FALSE))
{
}

Bus::~Bus()
{
    end();
}

void Bus::end()
{
    stop();
    if (!thread_.joinable())
        return;
    attach(
        g_idle_source_new(), context_.get(),
        [](gpointer loop) -> gboolean {
            g_main_loop_quit(static_cast<GMainLoop *>(loop));
            return G_SOURCE_REMOVE;
        },
        loop_.get());
    thread_.join();
}

std::string Bus::start()
{
    std::promise<std::string> first;
    std::future<std::string> result = first.get_future();
    thread_ = std::thread([this](std::promise<std::string> promise) { run(std::move(promise)); },
                          std::move(first));
    return result.get();
}

void Bus::run(std::promise<std::string> &&first)
{
    g_main_context_push_thread_default(context_.get());
    std::string failure = open();
    if (!failure.empty())
        retry_later();
    first.set_value(std::move(failure));
    g_main_loop_run(loop_.get());
    {
        const std::lock_guard lock(mutex_);
        connection_.reset();
    }
    g_main_context_pop_thread_default(context_.get());
}

std::string Bus::open()
{
    constexpr auto flags =
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    GError *error = nullptr;
    const std::string address = address_.empty() ? system_bus() : address_;
    GDBusConnection *const opened =
        g_dbus_connection_new_for_address_sync(address.c_str(), flags, nullptr, nullptr, &error);
    if (!opened) {
        const ErrorPtr owned(error);
        return owned->message;
    }
    g_dbus_connection_set_exit_on_close(opened, FALSE);
    g_signal_connect(opened, "closed",
                     G_CALLBACK(+[](GDBusConnection *, gboolean, GError *, gpointer self) {
                         static_cast<Bus *>(self)->lose();
                     }),
                     this);
    subscribe(opened);
    {
        const std::lock_guard lock(mutex_);
        connection_ = std::shared_ptr<GDBusConnection>(opened, g_object_unref);
    }
    handlers_.opened();
    return "";
}

void Bus::subscribe(GDBusConnection *connection)
{
    const auto listen = [&](const char *sender, const char *interface, const char *member,
                            const char *about) {
        g_dbus_connection_signal_subscribe(connection, sender, interface, member, nullptr, about,
                                           G_DBUS_SIGNAL_FLAGS_NONE, on_signal, &handlers_,
                                           nullptr);
    };
    listen(service, properties, "PropertiesChanged", nullptr);
    listen(service, manager, nullptr, nullptr);
    listen("org.freedesktop.DBus", "org.freedesktop.DBus", "NameOwnerChanged", service);
}

void Bus::lose()
{
    {
        const std::lock_guard lock(mutex_);
        if (connection_)
            g_signal_handlers_disconnect_by_data(connection_.get(), this);
        connection_.reset();
    }
    handlers_.closed();
    retry_later();
}

void Bus::retry_later()
{
    attach(
        g_timeout_source_new_seconds(retry_seconds), context_.get(),
        [](gpointer self) -> gboolean {
            return static_cast<Bus *>(self)->open().empty() ? G_SOURCE_REMOVE : G_SOURCE_CONTINUE;
        },
        this);
}

std::shared_ptr<GDBusConnection> Bus::connection() const
{
    const std::lock_guard lock(mutex_);
    return stopped_ ? nullptr : connection_;
}

Reply Bus::call(const Call &call)
{
    const std::shared_ptr<GDBusConnection> connection = this->connection();
    if (!connection || call.path.empty())
        return {CmeError::no_connection_to_phone, {}, false};
    const Progress progress(*this, call);
    log("->", call, arguments_text(call));
    GError *error = nullptr;
    const std::chrono::milliseconds limit = call.limit;
    GVariant *const answer = g_dbus_connection_call_sync(
        connection.get(), service, call.path.c_str(), call.interface, call.method,
        call.arguments.get(), nullptr, G_DBUS_CALL_FLAGS_NONE, static_cast<int>(limit.count()),
        progress.cancellable(), &error);
    if (answer) {
        log("<-", call, "ok");
        return {CmeError::ok, Value(answer)};
    }
    const ErrorPtr owned(error);
    const TextPtr name(g_dbus_error_get_remote_error(error));
    log("<-", call, error->message);
    const bool denied = name && is_denial(name.get());
    if (denied)
        report_denial(call);
    return {error_of(*error), {}, denied};
}

// A line for the first one: the daemons' answers do not tell it from other refusals.
void Bus::report_denial(const Call &call)
{
    if (!denial_reported_.exchange(true))
        warnx(
            "ModemManager refuses %s to this user: run as root, or install the polkit rule and the "
            "D-Bus policy for it",
            call.method);
}

void Bus::log(const char *direction, const Call &call, const std::string &text) const
{
    if (verbose_)
        std::fprintf(stderr, "MM %s %s %s.%s %s\n", direction, call.path.c_str(), call.interface,
                     call.method, text.c_str());
}

void Bus::cancel(std::string_view method)
{
    const std::lock_guard lock(mutex_);
    for (const auto &[name, cancellable] : in_progress_)
        if (method.empty() || name == method)
            g_cancellable_cancel(cancellable.get());
}

void Bus::stop()
{
    {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
    }
    cancel();
}

} // namespace modem_manager
