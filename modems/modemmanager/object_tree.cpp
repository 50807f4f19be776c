#include "object_tree.h"

#include "names.h"

#include <set>

namespace modem_manager
{
namespace
{

constexpr auto reading_limit = std::chrono::seconds(10); // never waits for the modem itself

// The objects of the interface that a modem refers to.
std::vector<std::string> references(const Object &object, const char *to)
{
    const auto of_modem = object.find(modem);
    if (of_modem == object.end())
        return {};
    std::vector<std::string> paths;
    if (to == sim_card)
        paths = {find(of_modem->second, "Sim").text()};
    else
        paths = find(of_modem->second, "Bearers").texts();
    std::erase_if(paths, [](const std::string &path) { return path.empty() || path == no_object; });
    return paths;
}

} // namespace

Value property(const Objects &objects, std::string_view path, std::string_view interface,
               std::string_view name)
{
    const auto object = objects.find(path);
    if (object == objects.end())
        return {};
    const auto values = object->second.find(interface);
    return values == object->second.end() ? Value() : find(values->second, name);
}

ObjectTree::ObjectTree(const std::string &address, bool verbose, std::function<void()> changed)
    : changed_(std::move(changed)),
      bus_(
          address, verbose,
          {[this] { load(); }, [this](const Signal &signal) { take(signal); }, [this] { clear(); }})
{
}

void ObjectTree::load()
{
    const Reply reply =
        bus_.call({manager_path, manager, "GetManagedObjects", {}, false, reading_limit});
    has_manager_ = reply.error == CmeError::ok;
    denied_ = reply.denied;
    Objects all;
    for (const Value &entry : reply.value.item(0).items()) {
        Object &object = all[entry.item(0).text()];
        for (const Value &interface : entry.item(1).items())
            object[interface.item(0).text()] = interface.item(1).dictionary();
    }
    {
        const std::lock_guard lock(mutex_);
        changing() = std::move(all);
    }
    read_references();
    notify();
}

void ObjectTree::clear()
{
    has_manager_ = false;
    {
        const std::lock_guard lock(mutex_);
        changing().clear();
    }
    notify();
}

void ObjectTree::take(const Signal &signal)
{
    if (signal.member == "NameOwnerChanged") {
        const bool there = !signal.arguments.item(2).text().empty();
        return there ? load() : clear();
    }
    if (signal.member == "PropertiesChanged")
        return properties_changed(signal);
    const std::string path = signal.arguments.item(0).text();
    if (signal.member == "InterfacesAdded") {
        for (const Value &interface : signal.arguments.item(1).items())
            merge(path, interface.item(0).text(), interface.item(1).dictionary());
    } else if (signal.member == "InterfacesRemoved") {
        const std::lock_guard lock(mutex_);
        Objects &objects = changing();
        if (const auto object = objects.find(path); object != objects.end())
            for (const std::string &interface : signal.arguments.item(1).texts())
                object->second.erase(interface);
        std::erase_if(objects, [](const auto &each) { return each.second.empty(); });
    }
    read_references();
    notify();
}

// Ignores an object that nothing refers to (yet), such as a message.
void ObjectTree::properties_changed(const Signal &signal)
{
    const std::string interface = signal.arguments.item(0).text();
    if (!read([&](const Objects &objects) { return objects.contains(signal.path); }))
        return;
    merge(signal.path, interface, signal.arguments.item(1).dictionary());
    if (interface == modem)
        read_references();
    notify();
}

void ObjectTree::merge(const std::string &path, std::string_view interface,
                       const Dictionary &values)
{
    const std::lock_guard lock(mutex_);
    Dictionary &stored = changing()[path][std::string(interface)];
    for (const auto &[name, value] : values)
        stored[name] = value;
}

std::vector<std::pair<std::string, const char *>> ObjectTree::missing_references() const
{
    std::vector<std::pair<std::string, const char *>> missing;
    for (const auto &[path, object] : objects_)
        for (const char *interface : {sim_card, bearer})
            for (const std::string &to : references(object, interface))
                if (!objects_.contains(to))
                    missing.emplace_back(to, interface);
    return missing;
}

// A bearer is made for each connection: those of the past go.
void ObjectTree::read_references()
{
    std::vector<std::pair<std::string, const char *>> missing;
    {
        const std::lock_guard lock(mutex_);
        std::set<std::string> wanted;
        for (const auto &[path, object] : objects_)
            for (const char *interface : {sim_card, bearer})
                for (const std::string &to : references(object, interface))
                    wanted.insert(to);
        std::erase_if(changing(), [&](const auto &each) {
            return !wanted.contains(each.first) &&
                   (each.second.contains(sim_card) || each.second.contains(bearer));
        });
        missing = missing_references();
    }
    for (const auto &[path, interface] : missing) {
        const Reply reply =
            bus_.call({path, properties, "GetAll", Value(g_variant_new("(s)", interface)), false,
                       reading_limit});
        if (reply.error == CmeError::ok)
            merge(path, interface, reply.value.item(0).dictionary());
    }
}

void ObjectTree::reload(const std::string &path, const char *interface)
{
    const Reply reply = bus_.call(
        {path, properties, "GetAll", Value(g_variant_new("(s)", interface)), false, reading_limit});
    if (reply.error != CmeError::ok)
        return;
    {
        const std::lock_guard lock(mutex_);
        Objects &objects = changing();
        const auto object = objects.find(path);
        if (object == objects.end() || !object->second.contains(interface))
            return; // it has gone since
        object->second.find(interface)->second = reply.value.item(0).dictionary();
    }
    if (std::string_view(interface) == modem)
        read_references();
    notify();
}

Objects &ObjectTree::changing()
{
    ++version_;
    return objects_;
}

void ObjectTree::notify()
{
    changed_condition_.notify_all();
    changed_();
}

void ObjectTree::stop()
{
    {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
    }
    changed_condition_.notify_all();
    bus_.stop();
}

} // namespace modem_manager
