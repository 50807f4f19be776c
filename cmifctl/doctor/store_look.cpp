#include "cmifctl/calls.h"
#include "cmifctl/verbs/store.h"
#include "look.h"
#include "platform/host_store.h"

namespace cmifctl
{
namespace
{

constexpr double store_timeout = 3; // seconds

void add_setting(const char *key, const char *value, void *settings)
{
    (*static_cast<Json *>(settings))[key] = value;
}

int read_store(Json &output)
{
    require_store();
    output = {{"running", Json::object()}, {"saved", Json::object()}};
    host_store_list(add_setting, &output["running"]);
    host_store_list_saved(add_setting, &output["saved"]);
    return 0;
}

} // namespace

StoreLook look_at_store(const Context &context)
{
    StoreLook look{.error = "", .path = host_store_directory(), .other = other_store()};
    client::CallOptions options = context.options;
    options.timeout = store_timeout;
    try {
        const Json read =
            client::call(options, {.request = no_request("reading the store"), .body = read_store})
                .output;
        look.running = read["running"];
        look.saved = read["saved"];
    } catch (const Failure &failure) {
        look.error = failure.what();
    }
    return look;
}

} // namespace cmifctl
