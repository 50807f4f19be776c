#include "stand_in.h"

#include <cstring>
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace stand_in
{
namespace
{

const std::string prefix = "org.freedesktop.ModemManager1";
const std::string manager_path = "/org/freedesktop/ModemManager1";

std::string full_name(const std::string &interface)
{
    if (interface == "Sim" || interface == "Bearer" || interface == "Sms" || interface == "Modem")
        return prefix + "." + interface;
    if (interface == "ProfileManager")
        return prefix + ".Modem.Modem3gpp.ProfileManager";
    return prefix + ".Modem." + interface;
}

std::string last_name(const std::string &interface)
{
    return interface.substr(interface.rfind('.') + 1);
}

bool is_listed(const std::string &path)
{
    return path.find("/Modem/") != std::string::npos;
}

GVariant *dictionary(const Dictionary &entries)
{
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE("a{sv}"));
    for (const auto &[name, entry] : entries)
        g_variant_builder_add(&builder, "{sv}", name.c_str(), entry.get());
    return g_variant_builder_end(&builder);
}

} // namespace

Bus::Bus()
{
    std::string directory = "/tmp/bus-XXXXXX";
    if (!mkdtemp(directory.data()))
        throw std::runtime_error("mkdtemp");
    address_ = "unix:path=" + directory + "/socket";
    start();
}

void Bus::start()
{
    int ready[2];
    if (pipe(ready) != 0)
        throw std::runtime_error("pipe");
    fcntl(ready[0], F_SETFD, FD_CLOEXEC);
    const std::string address = "--address=" + address_;
    const std::string print = "--print-address=" + std::to_string(ready[1]);
    const char *words[] = {"dbus-daemon",   "--session",   "--nofork", "--nopidfile",
                           address.c_str(), print.c_str(), nullptr};
    unlink(address_.substr(address_.find('/')).c_str());
    const int error =
        posix_spawnp(&process_, words[0], nullptr, nullptr, const_cast<char **>(words), environ);
    close(ready[1]);
    char byte = 0;
    const bool started = error == 0 && read(ready[0], &byte, 1) == 1;
    close(ready[0]);
    if (!started)
        throw std::runtime_error("dbus-daemon does not start");
}

void Bus::end()
{
    if (process_ <= 0)
        return;
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
    process_ = -1;
}

Manager::Manager(const std::string &address)
{
    constexpr auto flags =
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    connection_ =
        g_dbus_connection_new_for_address_sync(address.c_str(), flags, nullptr, nullptr, nullptr);
    if (!connection_)
        throw std::runtime_error("no bus");
    g_dbus_connection_set_exit_on_close(connection_, FALSE);
    g_dbus_connection_add_filter(connection_, filter, this, nullptr);
    g_variant_unref(g_dbus_connection_call_sync(
        connection_, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "RequestName", g_variant_new("(su)", prefix.c_str(), 0U), nullptr, G_DBUS_CALL_FLAGS_NONE,
        -1, nullptr, nullptr));
}

Manager::~Manager()
{
    g_dbus_connection_close_sync(connection_, nullptr, nullptr);
    g_object_unref(connection_);
    for (const Waiting &each : waiting_)
        g_object_unref(each.message);
}

void Manager::add(const std::string &path, const std::string &interface,
                  const std::string &properties)
{
    const std::lock_guard lock(mutex_);
    const std::string name = full_name(interface);
    objects_[path][name] = values(properties);
    if (!is_listed(path))
        return;
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE("a{sa{sv}}"));
    g_variant_builder_add(&builder, "{s@a{sv}}", name.c_str(), dictionary(objects_[path][name]));
    emit(manager_path, "org.freedesktop.DBus.ObjectManager", "InterfacesAdded",
         g_variant_new("(oa{sa{sv}})", path.c_str(), &builder));
}

void Manager::set(const std::string &path, const std::string &interface,
                  const std::string &properties)
{
    const std::lock_guard lock(mutex_);
    const std::string name = full_name(interface);
    const Dictionary changed = values(properties);
    for (const auto &[key, entry] : changed)
        objects_[path][name][key] = entry;
    emit(path, "org.freedesktop.DBus.Properties", "PropertiesChanged",
         g_variant_new("(s@a{sv}as)", name.c_str(), dictionary(changed), nullptr));
}

void Manager::remove(const std::string &path, const std::string &interface)
{
    const std::lock_guard lock(mutex_);
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE("as"));
    for (const auto &[name, properties] : std::map(objects_[path]))
        if (interface.empty() || name == full_name(interface)) {
            g_variant_builder_add(&builder, "s", name.c_str());
            objects_[path].erase(name);
        }
    if (objects_[path].empty())
        objects_.erase(path);
    emit(manager_path, "org.freedesktop.DBus.ObjectManager", "InterfacesRemoved",
         g_variant_new("(oas)", path.c_str(), &builder));
}

void Manager::emit(const std::string &path, const std::string &interface, const char *signal,
                   GVariant *arguments)
{
    g_dbus_connection_emit_signal(connection_, nullptr, path.c_str(), interface.c_str(), signal,
                                  arguments, nullptr);
}

void Manager::on(const std::string &method, Method action)
{
    const std::lock_guard lock(mutex_);
    methods_[method] = std::move(action);
}

void Manager::on(const std::string &method, const Answer &answer)
{
    on(method, [answer](const Value &) { return answer; });
}

std::vector<std::string> Manager::calls() const
{
    const std::lock_guard lock(mutex_);
    return calls_;
}

int Manager::count(const std::string &method) const
{
    int number = 0;
    for (const std::string &call : calls())
        number += call.starts_with(method + " ");
    return number;
}

void Manager::release()
{
    const std::lock_guard lock(mutex_);
    for (const Waiting &each : waiting_) {
        reply(each.message, each.answer);
        g_object_unref(each.message);
    }
    waiting_.clear();
}

GDBusMessage *Manager::filter(GDBusConnection *, GDBusMessage *message, gboolean incoming,
                              gpointer self)
{
    if (!incoming || g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL)
        return message;
    static_cast<Manager *>(self)->serve(message);
    g_object_unref(message);
    return nullptr;
}

void Manager::serve(GDBusMessage *message)
{
    const std::lock_guard lock(mutex_);
    GVariant *const body = g_dbus_message_get_body(message);
    const Value arguments = body ? Value(g_variant_ref(body)) : value("()");
    const Answer answer =
        answer_for(g_dbus_message_get_path(message), g_dbus_message_get_interface(message),
                   g_dbus_message_get_member(message), arguments);
    if (answer.later)
        waiting_.push_back({static_cast<GDBusMessage *>(g_object_ref(message)), answer});
    else
        reply(message, answer);
}

Answer Manager::answer_for(const std::string &path, const std::string &interface,
                           const std::string &method, const Value &arguments)
{
    if (method == "GetManagedObjects" && !methods_.contains("ObjectManager.GetManagedObjects")) {
        const Value all(listing());
        char *const text = g_variant_print(all.get(), TRUE);
        Answer answer{"", text, "(a{oa{sa{sv}}})"};
        g_free(text);
        return answer;
    }
    if (method == "GetAll") {
        const auto object = objects_.find(path);
        const std::string name = arguments.item(0).text();
        if (object == objects_.end() || !object->second.contains(name))
            return {"org.freedesktop.DBus.Error.UnknownMethod"};
        const Value all(g_variant_new("(@a{sv})", dictionary(object->second[name])));
        char *const text = g_variant_print(all.get(), TRUE);
        Answer answer{"", text, "(a{sv})"};
        g_free(text);
        return answer;
    }
    const std::string name = last_name(interface) + "." + method;
    char *const text = g_variant_print(arguments.get(), FALSE);
    calls_.push_back(name + " " + text);
    g_free(text);
    const auto action = methods_.find(name);
    return action == methods_.end() ? Answer{} : action->second(arguments);
}

GVariant *Manager::listing() const
{
    GVariantBuilder all;
    g_variant_builder_init(&all, G_VARIANT_TYPE("a{oa{sa{sv}}}"));
    for (const auto &[path, object] : objects_) {
        if (!is_listed(path))
            continue;
        GVariantBuilder interfaces;
        g_variant_builder_init(&interfaces, G_VARIANT_TYPE("a{sa{sv}}"));
        for (const auto &[name, properties] : object)
            g_variant_builder_add(&interfaces, "{s@a{sv}}", name.c_str(), dictionary(properties));
        g_variant_builder_add(&all, "{oa{sa{sv}}}", path.c_str(), &interfaces);
    }
    return g_variant_new("(a{oa{sa{sv}}})", &all);
}

void Manager::reply(GDBusMessage *message, const Answer &answer)
{
    GDBusMessage *made = nullptr;
    if (answer.error.empty()) {
        made = g_dbus_message_new_method_reply(message);
        g_dbus_message_set_body(made, value(answer.value, answer.type).get());
    } else {
        made = g_dbus_message_new_method_error_literal(message, answer.error.c_str(), "refused");
    }
    g_dbus_connection_send_message(connection_, made, G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr,
                                   nullptr);
    g_object_unref(made);
}

bool eventually(const std::function<bool()> &condition)
{
    for (int i = 0; i < 10'000; ++i) {
        if (condition())
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return false;
}

} // namespace stand_in
