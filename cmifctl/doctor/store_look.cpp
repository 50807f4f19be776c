#include "cmifctl/calls.h"
#include "cmifctl/verbs/settings.h"
#include "look.h"
#include "platform/host_store.h"

#include <fstream>
#include <string_view>

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

// The directory of the database that a process maps; "" when its maps can't be read.
std::string store_of(pid_t process)
{
    std::ifstream maps("/proc/" + std::to_string(process) + "/maps");
    for (std::string line; std::getline(maps, line);) {
        const std::size_t path = line.find('/');
        const std::size_t name = line.rfind("/running-");
        if (path != std::string::npos && name != std::string::npos && line.ends_with(".mdb"))
            return line.substr(path, name - path);
    }
    return "";
}

} // namespace

StoreLook look_at_store(const Context &context, const std::array<ChannelLook, 2> &channels)
{
    StoreLook look{.error = "", .path = host_store_directory(), .theirs = ""};
    for (const ChannelLook &channel : channels)
        if (channel.process > 0 && look.theirs.empty())
            look.theirs = store_of(channel.process);
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
