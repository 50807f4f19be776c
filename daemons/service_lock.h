// Keeps a second server away from what is served already.
#ifndef DAEMONS_SERVICE_LOCK_H
#define DAEMONS_SERVICE_LOCK_H

#include <string>
#include <utility>

namespace sim
{

// A locked file. The system releases the lock with its process, so what a killed server leaves is
// no obstacle.
class ServiceLock
{
public:
    // `what` is the beginning of a message: "the AT queues are".
    ServiceLock(std::string path, const char *what) : path_(std::move(path)), what_(what) {}
    ~ServiceLock();
    ServiceLock(const ServiceLock &) = delete;
    ServiceLock &operator=(const ServiceLock &) = delete;

    // False, and a line on standard error, when somebody else has it.
    bool take();

private:
    void name_holder() const;

    std::string path_;
    const char *what_;
    int fd_ = -1;
};

} // namespace sim

#endif
