// A D-Bus daemon of the test's own, and on it a service in ModemManager's place: objects with
// properties that the test sets, and methods that it answers.
#ifndef TESTS_MODEMS_MODEMMANAGER_STAND_IN_H
#define TESTS_MODEMS_MODEMMANAGER_STAND_IN_H

#include "modems/modemmanager/object_tree.h"

#include <functional>
#include <gtest/gtest.h>
#include <sys/types.h>

namespace stand_in
{

using modem_manager::Dictionary;
using modem_manager::Objects;
using modem_manager::Value;

// A value in GVariant's text form: "<8>", "{'State': <8>}", "(uint32 3, true)".
inline Value value(const std::string &text, const char *type = nullptr)
{
    GError *error = nullptr;
    GVariant *const parsed = g_variant_parse(
        type ? G_VARIANT_TYPE(type) : nullptr, // NOLINT(cppcoreguidelines-pro-type-cstyle-cast)
        text.c_str(), nullptr, nullptr, &error);
    if (!parsed)
        throw std::runtime_error(text + ": " + error->message);
    return Value(parsed);
}

inline Dictionary values(const std::string &text)
{
    return value(text, "a{sv}").dictionary();
}

class Bus
{
public:
    Bus();
    ~Bus() { end(); }
    Bus(const Bus &) = delete;
    Bus &operator=(const Bus &) = delete;

    const std::string &address() const { return address_; }
    void start(); // again, at the same address
    void end();

private:
    std::string address_;
    pid_t process_ = -1;
};

// What a method does.
struct Answer {
    std::string error;          // its D-Bus name; "" when it succeeds
    std::string value = "()";   // a tuple in text form
    const char *type = nullptr; // of the value, where the text is not enough
    bool later = false;         // not before release() is called
};
using Method = std::function<Answer(const Value &arguments)>;

inline constexpr const char *modem_path = "/org/freedesktop/ModemManager1/Modem/0";
inline constexpr const char *sim_path = "/org/freedesktop/ModemManager1/SIM/0";

class Manager
{
public:
    explicit Manager(const std::string &address);
    ~Manager();
    Manager(const Manager &) = delete;
    Manager &operator=(const Manager &) = delete;

    // Interfaces have their last name here: "Modem", "Modem3gpp", "Sim". Listed objects are added
    // and removed with a signal; others, such as a SIM, are found by who knows their path.
    void add(const std::string &path, const std::string &interface, const std::string &properties);
    void set(const std::string &path, const std::string &interface, const std::string &properties);
    void remove(const std::string &path, const std::string &interface = "");

    // "Sim.SendPin"; without one a call succeeds with ().
    void on(const std::string &method, Method action);
    void on(const std::string &method, const Answer &answer);
    void release(); // answers what waits

    // "Sim.SendPin ('1234',)", in their order, without reading of properties.
    std::vector<std::string> calls() const;
    bool was_called(const std::string &method) const { return count(method) > 0; }
    int count(const std::string &method) const;

private:
    struct Waiting {
        GDBusMessage *message;
        Answer answer;
    };
    static GDBusMessage *filter(GDBusConnection *connection, GDBusMessage *message,
                                gboolean incoming, gpointer self);
    void serve(GDBusMessage *message);
    Answer answer_for(const std::string &path, const std::string &interface,
                      const std::string &method, const Value &arguments);
    GVariant *listing() const;
    void reply(GDBusMessage *message, const Answer &answer);
    void emit(const std::string &path, const std::string &interface, const char *signal,
              GVariant *arguments);

    GDBusConnection *connection_;
    mutable std::recursive_mutex mutex_; // of all below: a method may set properties
    Objects objects_;
    std::map<std::string, Method> methods_;
    std::vector<std::string> calls_;
    std::vector<Waiting> waiting_;
};

// Waits until it is so.
bool eventually(const std::function<bool()> &condition);

} // namespace stand_in

#endif
