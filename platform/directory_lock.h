// Taking turns with the other processes and threads that use the store's directory.
#ifndef PLATFORM_DIRECTORY_LOCK_H
#define PLATFORM_DIRECTORY_LOCK_H

#include <mutex>

namespace host_store
{

// A save may take long, on a slow disk: opening the store does not wait for it.
enum class Turn { opening, saving };

// Creates the directory if it is missing, and waits until no other process or thread opens the
// store, or none saves it; none can while this object exists. The system releases the lock of a
// killed process. A thread that saves may open the store too, never the other way round.
class DirectoryLock
{
public:
    explicit DirectoryLock(Turn turn);
    ~DirectoryLock();
    DirectoryLock(const DirectoryLock &) = delete;
    DirectoryLock &operator=(const DirectoryLock &) = delete;

    // False if the directory can't be used; the reason has been reported.
    bool held() const { return locked_ >= 0; }
    // Makes created and renamed files durable. False with the reason in errno.
    bool sync() const;

private:
    std::unique_lock<std::mutex> threads_;
    int directory_ = -1;
    int locked_ = -1; // the directory's descriptor or that of a file in it
};

} // namespace host_store

#endif
