#include "stores.h"

#include "platform/host_store.h"
#include "platform/tarn_nvram_config.h"

#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <filesystem>
#include <map>
#include <string_view>

namespace bench
{
namespace
{

std::map<std::string, std::string, std::less<>> &table()
{
    static std::map<std::string, std::string, std::less<>> all;
    return all;
}

const char *get_from_memory(const char *key)
{
    static char answer[256];
    const auto found = table().find(std::string_view(key));
    answer[found == table().end() ? 0 : found->second.copy(answer, sizeof answer - 1)] = '\0';
    return answer;
}

// The function that this program's own one hides.
template <typename Function>
Function hosts(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

auto *get = get_from_memory;

} // namespace

const char *name_of(Store store)
{
    return store == Store::memory ? "store in memory" : "host's store";
}

void use(Store store)
{
    get = store == Store::memory ? get_from_memory : hosts<decltype(get)>("tarnNvramConfig_get");
}

void empty_both()
{
    table().clear();
    host_store_power_cycle(); // nothing was saved
}

void set_in_both(const std::string &key, const std::string &value)
{
    static const auto set = hosts<decltype(&tarnNvramConfig_set)>("tarnNvramConfig_set");
    table()[key] = value;
    set(key.c_str(), value.c_str());
}

HostStoreFolder::HostStoreFolder()
{
    if (mkdtemp(path_.data()) == nullptr || setenv("CMIF_STORE", path_.c_str(), 1) != 0)
        std::abort();
}

HostStoreFolder::~HostStoreFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

} // namespace bench

extern "C" const char *tarnNvramConfig_get(const char *key)
{
    return bench::get(key);
}

extern "C" int tarnNvramConfig_set(const char *key, const char *value)
{
    bench::set_in_both(key, value);
    return 0;
}

extern "C" int tarnNvramConfig_match(const char *key, const char *text)
{
    return std::strcmp(tarnNvramConfig_get(key), text) == 0;
}

extern "C" int tarnNvramConfig_save(void)
{
    return 0;
}
