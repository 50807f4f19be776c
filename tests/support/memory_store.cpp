#include "memory_store.h"

#include "platform/tarn_nvram_config.h"
#include "record.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <mutex>

namespace
{
std::mutex mutex;
std::map<std::string, std::string> values;
std::map<std::string, int> read_counts;
int access_count = 0;

thread_local char answer[store::longest_value + 1];

// Every access overwrites the last answer.
void begin_access(const std::string &step)
{
    note_step(step);
    memset(answer, '#', sizeof answer - 1);
    answer[sizeof answer - 1] = '\0';
    ++access_count;
}

std::string look_up(const std::string &key)
{
    const auto found = values.find(key);
    return found == values.end() ? "" : found->second;
}
} // namespace

void store::set(const std::string &key, const std::string &value)
{
    if (value.size() > longest_value) {
        fprintf(stderr, "memory_store: a value of %zu bytes\n", value.size());
        abort();
    }
    const std::lock_guard lock(mutex);
    values[key] = value;
}

void store::unset(const std::string &key)
{
    const std::lock_guard lock(mutex);
    values.erase(key);
}

std::string store::value(const std::string &key)
{
    const std::lock_guard lock(mutex);
    return look_up(key);
}

int store::reads(const std::string &key)
{
    const std::lock_guard lock(mutex);
    return read_counts[key];
}

int store::reads()
{
    const std::lock_guard lock(mutex);
    int sum = 0;
    for (const auto &[key, count] : read_counts)
        sum += count;
    return sum;
}

int store::accesses()
{
    const std::lock_guard lock(mutex);
    return access_count;
}

const char *tarnNvramConfig_get(const char *key)
{
    const std::lock_guard lock(mutex);
    begin_access(std::string("get ") + key);
    ++read_counts[key];
    const std::string value = look_up(key);
    memcpy(answer, value.c_str(), value.size() + 1);
    return answer;
}

int tarnNvramConfig_set(const char *key, const char *value)
{
    const std::lock_guard lock(mutex);
    const std::string copy = value; // `value` may be the last answer
    begin_access(std::string("set ") + key + "=" + copy);
    values[key] = copy;
    return 0;
}

// Platforms promise no more than "not 0".
int tarnNvramConfig_match(const char *key, const char *text)
{
    const std::lock_guard lock(mutex);
    const bool equal = look_up(key) == text;
    begin_access(std::string("match ") + key + "=" + text);
    return equal ? 4 : 0;
}

int tarnNvramConfig_save()
{
    const std::lock_guard lock(mutex);
    begin_access("save");
    return 0;
}
