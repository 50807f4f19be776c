#include "environment.h"

#include <cinttypes>
#include <cstdio>
#include <cstdlib>

namespace cmif_record
{
namespace
{

constexpr const char *path_variable = "CMIF_RECORD_FILE";
constexpr const char *start_variable = "CMIF_RECORD_START";
constexpr const char *key_variable = "CMIF_RECORD_KEY"; // none: secrets are kept

} // namespace

void put_into_environment(const RecordingSettings &settings)
{
    setenv(path_variable, settings.path.c_str(), 1);
    setenv(start_variable, std::to_string(settings.start).c_str(), 1);
    unsetenv(key_variable);
    if (!settings.key)
        return;
    char text[40];
    std::snprintf(text, sizeof text, "%016" PRIx64 "-%016" PRIx64, (*settings.key)[0],
                  (*settings.key)[1]);
    setenv(key_variable, text, 1);
}

std::optional<RecordingSettings> settings_from_environment()
{
    const char *path = std::getenv(path_variable);
    const char *start = std::getenv(start_variable);
    const char *key = std::getenv(key_variable);
    if (!path || !start)
        return std::nullopt;
    RecordingSettings settings{path, std::nullopt, std::strtoll(start, nullptr, 10)};
    if (!key)
        return settings;
    char *end = nullptr;
    StandInKey words{std::strtoull(key, &end, 16), 0};
    words[1] = *end == '-' ? std::strtoull(end + 1, nullptr, 16) : 0;
    settings.key = words;
    return settings;
}

} // namespace cmif_record
