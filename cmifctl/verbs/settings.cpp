#include "settings.h"

#include "platform/host_store.h"
#include "platform/tarn_nvram_config.h"

#include <filesystem>

namespace cmifctl
{
namespace
{

void check_key(const std::string &key)
{
    if (key.empty() || key.size() > host_store_key_limit)
        throw Failure(Exit::invalid,
                      "KEY takes a name of 1 to " + std::to_string(host_store_key_limit) + " bytes",
                      "'cmifctl config list' shows the settings.");
}

// The store has already written the reason to standard error.
void check_store(int result, const std::string &what)
{
    if (result != 0)
        throw Failure(Exit::other, what,
                      "The store is in " + std::string(host_store_directory()) +
                          "; CMIF_STORE selects another directory.");
}

} // namespace

void require_store()
{
    check_store(host_store_list([](const char *, const char *, void *) {}, nullptr),
                "the settings can't be read");
}

std::string other_store()
{
    const std::string own = host_store_directory();
    const std::string daemons = host_store_announced();
    std::error_code ignored;
    if (daemons.empty() || daemons == own || std::filesystem::equivalent(daemons, own, ignored))
        return "";
    return "the daemons use the store " + daemons + ", and this command " + own +
           "; CMIF_STORE=" + daemons + " selects theirs";
}

std::string unknown_values_hint()
{
    const std::string other = other_store();
    return other.empty()
               ? "The daemon has published none in this store (" +
                     std::string(host_store_directory()) + "); CMIF_STORE names another one."
               : "The cause: " + other + ".";
}

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
        check_store(tarnNvramConfig_set(key.c_str(), value.c_str()),
                    "the setting " + key + " was not stored");
        return 0;
    });
}

Json all_settings(const Context &context)
{
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
        check_store(tarnNvramConfig_save(), "the settings were not saved");
        return 0;
    });
}

} // namespace cmifctl
