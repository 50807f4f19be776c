// The directory that the processes of one user share.
#ifndef PLATFORM_STORE_DIRECTORY_H
#define PLATFORM_STORE_DIRECTORY_H

#include <mutex>
#include <string>

namespace host_store
{

inline constexpr const char *choose_another = "set CMIF_STORE to a directory that you can write";

// The absolute path, settled at the first call.
const std::string &store_directory();

// Makes the directory if need be and keeps every other process and thread from opening or saving
// the store meanwhile. A holder that is killed lets go.
class DirectoryLock
{
public:
    DirectoryLock();
    ~DirectoryLock();
    DirectoryLock(const DirectoryLock &) = delete;
    DirectoryLock &operator=(const DirectoryLock &) = delete;

    // False after a complaint: no such directory can be had.
    bool held() const { return descriptor_ >= 0; }
    // Makes the names in the directory last.
    bool sync() const;

private:
    std::unique_lock<std::mutex> threads_;
    int descriptor_ = -1;
};

} // namespace host_store

#endif
