#include "fuzz_store.h"

#include "platform/tarn_nvram_config.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

std::map<std::string, std::string> stored;

void check(bool holds, const char *what)
{
    if (holds)
        return;
    fprintf(stderr, "wrong: %s\n", what);
    abort();
}

std::unique_ptr<char[]> exactly(const std::string &text)
{
    auto copy = std::make_unique<char[]>(text.size() + 1);
    memcpy(copy.get(), text.c_str(), text.size() + 1);
    return copy;
}

// In memory of exactly the value's size, and gone with the next answer.
const char *tarnNvramConfig_get(const char *key)
{
    static std::unique_ptr<char[]> answer;
    const auto found = stored.find(key);
    answer = exactly(found == stored.end() ? "" : found->second);
    return answer.get();
}

int tarnNvramConfig_set(const char *, const char *)
{
    return 0;
}

int tarnNvramConfig_match(const char *, const char *)
{
    return 0;
}

int tarnNvramConfig_save()
{
    return 0;
}
