// The message queues and files of a router, which a run without namespaces shares with the machine.
#ifndef SANDBOX_LEFTOVERS_H
#define SANDBOX_LEFTOVERS_H

namespace sandbox
{

// Held by a router while it serves the queues.
inline constexpr const char *at_service_lock = "/tmp/cmif-sim-at.lock";
inline constexpr const char *qmi_service_lock = "/tmp/cmif-sim-qmi.lock";

// Returns whether there are any; if so, prints which, and how to remove them.
bool report_leftovers();

// Removes them all.
void remove_leftovers();

// Creates /data, where the library writes its log, if there is none; then also removes it.
class DataFolder
{
public:
    DataFolder();
    ~DataFolder();
    DataFolder(const DataFolder &) = delete;
    DataFolder &operator=(const DataFolder &) = delete;

private:
    bool created_;
};

} // namespace sandbox

#endif
