// The store behind the library: one in this program's memory, or the host's, in a folder of its
// own.
#ifndef BENCH_STORES_H
#define BENCH_STORES_H

#include <string>

namespace bench
{

enum class Store { memory, host };
const char *name_of(Store store);

// From now on the library reads this one.
void use(Store store);

void empty_both();
void set_in_both(const std::string &key, const std::string &value);

// A temporary folder for the host's store while this object lives; the environment names it.
class HostStoreFolder
{
public:
    HostStoreFolder();
    ~HostStoreFolder();
    HostStoreFolder(const HostStoreFolder &) = delete;
    HostStoreFolder &operator=(const HostStoreFolder &) = delete;

private:
    std::string path_ = "/tmp/cmif-bench-XXXXXX";
};

} // namespace bench

#endif
