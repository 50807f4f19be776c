// ModemManager's objects as it reports them: each with its interfaces, these with their properties.
#ifndef MODEMS_MODEMMANAGER_OBJECT_TREE_H
#define MODEMS_MODEMMANAGER_OBJECT_TREE_H

#include "bus.h"

#include <condition_variable>
#include <utility>

namespace modem_manager
{

using Object = std::map<std::string, Dictionary, std::less<>>; // by interface
using Objects = std::map<std::string, Object, std::less<>>;    // by path

// The property, or a missing value.
Value property(const Objects &objects, std::string_view path, std::string_view interface,
               std::string_view name);

// LocalState up to date by signals. SIM cards and bearers are not among the objects that
// ModemManager lists; those that a modem refers to are read one by one. Messages are read by the
// verb that lists them.
class ObjectTree
{
public:
    // `changed` is called after each change, from the bus's thread or that of a reload().
    ObjectTree(const std::string &address, bool verbose, std::function<void()> changed);

    std::string start() { return bus_.start(); }
    Bus &bus() { return bus_; }

    // Whether ModemManager has answered, or refuses this user.
    bool has_manager() const { return has_manager_; }
    bool denied() const { return denied_; }

    // The reader, and the condition of wait(), take no lock: those of the modem come before this
    // one.
    template <class Reader>
    auto read(const Reader &reader) const
    {
        const std::lock_guard lock(mutex_);
        return reader(objects_);
    }

    // Incremented by each change of the objects. Read without the lock.
    unsigned version() const { return version_; }

    // Reads an interface again: the answer to a call may come before the signal of what it changed.
    void reload(const std::string &path, const char *interface);

    // Waits until the objects are as wanted; false when they weren't in time, or at the end.
    template <class Condition>
    bool wait(std::chrono::milliseconds limit, const Condition &condition)
    {
        std::unique_lock lock(mutex_);
        changed_condition_.wait_for(lock, limit,
                                    [&] { return stopped_ || condition(std::as_const(objects_)); });
        return !stopped_ && condition(std::as_const(objects_));
    }

    // Ends all waits and calls for good; end() also the reports of changes.
    void stop();
    void end() { bus_.end(); }

private:
    void load();
    void clear();
    void take(const Signal &signal);
    void properties_changed(const Signal &signal);
    void read_references();
    std::vector<std::pair<std::string, const char *>> missing_references() const;
    void merge(const std::string &path, std::string_view interface, const Dictionary &values);
    Objects &changing(); // for the holder of the lock
    void notify();

    std::function<void()> changed_;
    mutable std::mutex mutex_; // of the four below
    std::condition_variable changed_condition_;
    Objects objects_;
    std::atomic<unsigned> version_ = 0; // changes under the lock
    bool stopped_ = false;
    std::atomic<bool> has_manager_ = false, denied_ = false;
    Bus bus_; // destroyed first: its thread uses the others
};

} // namespace modem_manager

#endif
