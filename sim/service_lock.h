// Keeps a second server away from queues that are served already.
#ifndef SIM_SERVICE_LOCK_H
#define SIM_SERVICE_LOCK_H

namespace sim
{

// A locked file with the process id of whoever serves. The system releases the lock with its
// process, so what a killed server leaves is no obstacle.
class ServiceLock
{
public:
    // `daemon` is its name for messages.
    ServiceLock(const char *path, const char *daemon) : path_(path), daemon_(daemon) {}
    ~ServiceLock();
    ServiceLock(const ServiceLock &) = delete;
    ServiceLock &operator=(const ServiceLock &) = delete;

    // False, and a line on standard error, when somebody else has it.
    bool take();

private:
    void name_holder() const;

    const char *path_;
    const char *daemon_;
    int fd_ = -1;
};

} // namespace sim

#endif
