// The lock on the store's directory.
#ifndef PLATFORM_DIRECTORY_LOCK_H
#define PLATFORM_DIRECTORY_LOCK_H

#include <mutex>

namespace host_store
{

// Creates the directory if it is missing, and waits until no other process or thread opens or saves
// the store; none can while this object exists. The system releases the lock of a killed process.
class DirectoryLock
{
public:
    DirectoryLock();
    ~DirectoryLock();
    DirectoryLock(const DirectoryLock &) = delete;
    DirectoryLock &operator=(const DirectoryLock &) = delete;

    // False if the directory can't be used; the reason has been reported.
    bool held() const { return descriptor_ >= 0; }
    // Makes created and renamed files durable. False with the reason in errno.
    bool sync() const;

private:
    std::unique_lock<std::mutex> threads_;
    int descriptor_ = -1;
};

} // namespace host_store

#endif
