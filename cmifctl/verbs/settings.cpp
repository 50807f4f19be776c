#include "settings.h"

#include "platform/host_store.h"
#include "platform/tarn_nvram_config.h"
#include "store.h"

namespace cmifctl
{
namespace
{

void check_key(const std::string &key)
{
    if (key.empty() || key.size() > host_store_key_limit)
        throw Failure(Exit::invalid,
                      "invalid KEY: not 1 to " + std::to_string(host_store_key_limit) + " bytes",
                      "'cmifctl config list' shows the settings.");
}

} // namespace

std::string setting(const Context &context, const std::string &key)
{
    check_key(key);
    return read(context, "reading a setting", [&key](Json &output) {
        require_store();
        output = tarnNvramConfig_get(key.c_str());
        return 0;
    });
}

void change_setting(const Context &context, const std::string &key, const std::string &value)
{
    check_key(key);
    if (value.size() > host_store_value_limit)
        throw Failure(Exit::invalid, "the value has " + std::to_string(value.size()) + " bytes",
                      "At most " + std::to_string(host_store_value_limit) + ".");
    read(context, "changing a setting", [&](Json &) {
        require_daemons_store();
        check_store(tarnNvramConfig_set(key.c_str(), value.c_str()),
                    "the setting " + key + " was not stored");
        return 0;
    });
}

Json all_settings(const Context &context)
{
    if (is_platforms_store())
        throw Failure(Exit::other, "the platform's store can't list its settings",
                      "'cmifctl config get KEY' shows one.");
    return read(context, "listing the settings", [](Json &output) {
        output = Json::object();
        const auto add = [](const char *key, const char *value, void *settings) {
            (*static_cast<Json *>(settings))[key] = value;
        };
        check_store(host_store_list(add, &output), "the settings can't be listed");
        return 0;
    });
}

void save_settings(const Context &context)
{
    read(context, "saving the settings", [](Json &) {
        require_daemons_store();
        check_store(tarnNvramConfig_save(), "the settings were not saved");
        return 0;
    });
}

} // namespace cmifctl
