#include "cmifctl/calls.h"
#include "cmifctl/verbs/store.h"
#include "platform/host_store.h"
#include "platform/tarn_nvram_config.h"
#include "snapshot.h"

namespace cmifctl
{
namespace
{

constexpr double store_timeout = 3; // seconds

// A platform's store can't be listed, so it is asked for what the checks judge by.
constexpr const char *judged_by[] = {
    "debug_at_cmif",    "debug_lte_enable", "debug_qmi_cmif", "lte_mobile_pin1c",
    "lte_mobile_puk1c", "lte_mobile_imei",  "lte_sim_status", "lte_network_reg_status_state"};

Json read_settings()
{
    Json settings = Json::object();
    for (const char *key : judged_by)
        if (is_stored(key))
            settings[key] = tarnNvramConfig_get(key);
    return settings;
}

void add_setting(const char *key, const char *value, void *settings)
{
    (*static_cast<Json *>(settings))[key] = value;
}

int read_store(Json &output)
{
    if (is_platforms_store()) {
        output = {{"running", read_settings()}, {"saved", nullptr}};
        return 0;
    }
    require_store();
    output = {{"running", Json::object()}, {"saved", Json::object()}};
    host_store_list(add_setting, &output["running"]);
    host_store_list_saved(add_setting, &output["saved"]);
    return 0;
}

} // namespace

StoreSnapshot inspect_store(const Context &context)
{
    StoreSnapshot snapshot{.error = "", .path = host_store_directory(), .other = other_store()};
    client::CallOptions options = context.options;
    options.timeout = store_timeout;
    try {
        const Json read =
            client::call(options, {.request = no_request("reading the store"), .body = read_store})
                .output;
        snapshot.running = read["running"];
        snapshot.saved = read["saved"];
    } catch (const Failure &failure) {
        snapshot.error = failure.what();
    }
    return snapshot;
}

} // namespace cmifctl
