#include "checks.h"
#include "cli/numbers.h"

#include <algorithm>
#include <array>
#include <set>

namespace cmifctl
{
namespace
{

// What users set. Everything else is the modem's state, which the daemons publish at each start.
bool is_setting(std::string_view key)
{
    constexpr std::array settings{"lte_qmi_apn",
                                  "lte_qmi_user",
                                  "lte_qmi_password",
                                  "lte_qmi_auth",
                                  "lte_qmi_pdp",
                                  "lte_qmi_cur_ip_family",
                                  "lte_qmi_auto_connect_when_start_up"};
    return !key.starts_with("lte_") ||
           std::find(settings.begin(), settings.end(), key) != settings.end();
}

bool holds_modem_state(const StoreSnapshot &store)
{
    const auto items = store.running.items();
    return std::any_of(items.begin(), items.end(),
                       [](const auto &item) { return !is_setting(item.key()); });
}

// A switch that was never set reads as 0.
std::string number_or_text(const Json &settings, const std::string &key)
{
    return settings.is_object() ? settings.value(key, "0") : "0";
}

} // namespace

Problems checks::unreadable_store(const Snapshot &snapshot)
{
    if (snapshot.store.error.empty())
        return {};
    return {snapshot.store.name() + ": " + snapshot.store.error};
}

Problems checks::other_store(const Snapshot &snapshot)
{
    return snapshot.store.other.empty() ? Problems{} : Problems{snapshot.store.other};
}

Problems checks::empty_store(const Snapshot &snapshot)
{
    const StoreSnapshot &store = snapshot.store;
    const bool told = !store.error.empty() || !store.other.empty();
    if (told || !snapshot.served() || holds_modem_state(store))
        return {};
    return {"the daemons answer, but have published nothing in " + store.name()};
}

Problems checks::missing_modem(const Snapshot &snapshot)
{
    const bool missing = snapshot.served() && holds_modem_state(snapshot.store) &&
                         snapshot.store.value("lte_sim_status").empty();
    return missing ? Problems{"the daemons know nothing of their modem"} : Problems{};
}

Problems checks::unsaved_settings(const Snapshot &snapshot)
{
    if (!snapshot.store.saved.is_object())
        return {};
    std::set<std::string> keys;
    for (const Json *side : {&snapshot.store.running, &snapshot.store.saved})
        for (const auto &[key, value] : side->items())
            keys.insert(key);
    std::string changed;
    for (const std::string &key : keys)
        if (is_setting(key) && number_or_text(snapshot.store.running, key) !=
                                   number_or_text(snapshot.store.saved, key))
            changed += (changed.empty() ? "" : ", ") + key;
    return changed.empty() ? Problems{} : Problems{"a restart loses the changes of " + changed};
}

Problems checks::traced_secrets(const Snapshot &snapshot)
{
    Problems problems;
    const std::pair<const char *, const char *> switches[]{
        {"debug_at_cmif", "PINs, PUKs and keys"}, {"debug_qmi_cmif", "the profile's password"}};
    for (const auto &[key, secrets] : switches)
        if (cli::whole_number(snapshot.store.value(key)).value_or(0) > 0)
            problems.emplace_back(std::string(key) + " is on: programs print " + secrets +
                                      " on their standard output",
                                  key);
    return problems;
}

} // namespace cmifctl
