#include "host_store.h"

#include "answer.h"
#include "directory_lock.h"
#include "error_report.h"
#include "open_store.h"
#include "running_store.h"
#include "saved_file.h"
#include "store_directory.h"
#include "tarn_nvram_config.h"

#include <algorithm>
#include <cstring>
#include <ctime>
#include <string>
#include <sys/stat.h>

namespace
{

using namespace host_store;

constinit thread_local Answer answer;

bool is_text(const char *function, const char *name, const char *text)
{
    if (text == nullptr)
        report_error(function, std::string("the ") + name + " is a null pointer",
                     "nothing is done");
    return text != nullptr;
}

bool fits(const char *function, const char *name, const char *text, std::size_t limit)
{
    if (strnlen(text, limit + 1) <= limit)
        return true;
    report_error(function,
                 std::string("the ") + name + " has more than " + std::to_string(limit) + " bytes",
                 "nothing is done; shorten it");
    return false;
}

bool is_key(const char *function, const char *key)
{
    if (!is_text(function, "key", key) || !fits(function, "key", key, host_store_key_limit))
        return false;
    if (*key == '\0')
        report_error(function, "the key is empty", "nothing is done; give one");
    return *key != '\0';
}

} // namespace

// An argument may be the last answer itself, so it is poisoned only after the arguments were used.

const char *tarnNvramConfig_get(const char *key)
{
    const char *result = nullptr;
    if (is_key("tarnNvramConfig_get", key))
        read_value(key, [&result](std::string_view value) { result = answer.set(value); });
    return result != nullptr ? result : answer.set("");
}

int tarnNvramConfig_set(const char *key, const char *value)
{
    const char *const function = "tarnNvramConfig_set";
    const bool done = is_key(function, key) && is_text(function, "value", value) &&
                      fits(function, "value", value, host_store_value_limit) &&
                      write_value(key, value);
    answer.poison();
    return done ? 0 : -1;
}

int tarnNvramConfig_match(const char *key, const char *text)
{
    const char *const function = "tarnNvramConfig_match";
    bool equal = false;
    if (is_key(function, key) && is_text(function, "text", text))
        read_value(key, [&](std::string_view value) { equal = value == text; });
    answer.poison();
    return equal ? 1 : 0;
}

int tarnNvramConfig_save(void)
{
    answer.poison();
    if (!is_open())
        return -1;
    const DirectoryLock directory(Turn::saving);
    Entries entries;
    return directory.held() && read_all(entries) && save(directory, entries) ? 0 : -1;
}

int host_store_power_cycle(void)
{
    return reload_saved() ? 0 : -1;
}

int host_store_list(void (*each)(const char *key, const char *value, void *context), void *context)
{
    Entries entries;
    if (!read_all(entries))
        return -1;
    for (const auto &[key, value] : entries)
        each(key.c_str(), value.c_str(), context);
    return 0;
}

void host_store_list_saved(void (*each)(const char *key, const char *value, void *context),
                           void *context)
{
    for (const auto &[key, value] : load_saved())
        each(key.c_str(), value.c_str(), context);
}

const char *host_store_directory(void)
{
    return store_directory().c_str();
}

double host_store_age(void)
{
    struct stat file = {};
    timespec now = {};
    if (stat(database_path().c_str(), &file) != 0 || clock_gettime(CLOCK_REALTIME, &now) != 0)
        return -1;
    const auto seconds = static_cast<double>(now.tv_sec - file.st_mtim.tv_sec);
    return std::max(0.0, seconds + static_cast<double>(now.tv_nsec - file.st_mtim.tv_nsec) * 1e-9);
}
