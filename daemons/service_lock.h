// Refuses a second server for what is already being served.
#ifndef DAEMONS_SERVICE_LOCK_H
#define DAEMONS_SERVICE_LOCK_H

#include <string>
#include <utility>

namespace daemons
{

// A locked file. The system releases the lock when its process ends, however it ends.
class ServiceLock
{
public:
    // `what` begins a message: "the AT queues are".
    ServiceLock(std::string path, const char *what) : path_(std::move(path)), what_(what) {}
    ~ServiceLock();
    ServiceLock(const ServiceLock &) = delete;
    ServiceLock &operator=(const ServiceLock &) = delete;

    // False, and a line on standard error, when another process has it.
    bool take();

private:
    void name_holder() const;

    std::string path_;
    const char *what_;
    int fd_ = -1;
};

} // namespace daemons

#endif
