#include "host_store.h"

#include "error_report.h"
#include "running_store.h"
#include "saved_file.h"
#include "store_directory.h"
#include "tarn_nvram_config.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace
{

using namespace host_store;

// The one answer of a thread. Each call spoils the last one, so that a program that keeps the
// pointer finds out here and not on some platform.
class Answer
{
public:
    const char *spoil()
    {
        std::memset(text_.data(), '#', length_);
        text_[length_] = '\0';
        return text_.data();
    }
    const char *set(std::string_view value)
    {
        spoil();
        const std::size_t length = std::min(value.size(), text_.size() - 1);
        std::memcpy(text_.data(), value.data(), length);
        text_[length] = '\0';
        length_ = std::max<std::size_t>(length, 1); // an empty answer is spoilt as well
        return text_.data();
    }

private:
    std::array<char, host_store_value_limit + 1> text_{};
    std::size_t length_ = 0;
};

constinit thread_local Answer answer;

bool is_text(const char *function, const char *name, const char *text)
{
    if (text == nullptr)
        complain(function, std::string("the ") + name + " is a null pointer", "nothing is done");
    return text != nullptr;
}

bool fits(const char *function, const char *name, const char *text, std::size_t limit)
{
    const bool fitting = strnlen(text, limit + 1) <= limit;
    if (!fitting) {
        complain(function,
                 std::string("the ") + name + " has more than " + std::to_string(limit) + " bytes",
                 "nothing is done; shorten it");
    }
    return fitting;
}

bool is_key(const char *function, const char *key)
{
    if (!is_text(function, "key", key) || !fits(function, "key", key, host_store_key_limit))
        return false;
    if (*key == '\0')
        complain(function, "the key is empty", "nothing is done; name one");
    return *key != '\0';
}

} // namespace

// Arguments may lie in the last answer: it is spoilt only when they have been used.

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
    answer.spoil();
    return done ? 0 : -1;
}

int tarnNvramConfig_match(const char *key, const char *text)
{
    const char *const function = "tarnNvramConfig_match";
    bool equal = false;
    if (is_key(function, key) && is_text(function, "text", text))
        read_value(key, [&](std::string_view value) { equal = value == text; });
    answer.spoil();
    return equal ? 1 : 0;
}

int tarnNvramConfig_save(void)
{
    answer.spoil();
    if (!is_open()) // outside the lock, which opening takes itself
        return -1;
    const DirectoryLock directory;
    Entries entries;
    return directory.held() && read_all(entries) && save(directory, entries) ? 0 : -1;
}

int host_store_power_cycle(void)
{
    return start_anew() ? 0 : -1;
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

const char *host_store_directory(void)
{
    return store_directory().c_str();
}
