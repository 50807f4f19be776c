#include "qmi_requests.h"

#include "qmi_record.h"

namespace sim
{
namespace
{

using Payload = std::string_view;

QmiAnswer device_revision(ModemState &, Payload)
{
    return ModemState::firmware;
}

QmiAnswer modify_profile(ModemState &modem, Payload payload)
{
    std::optional<ConnectionProfile> profile = decode_profile(payload);
    if (!profile)
        return ret_incorrect_parameters;
    modem.connection.modify(*std::move(profile), Clock::now());
    return ret_ok;
}

QmiAnswer start(ModemState &modem, Payload)
{
    return modem.connection.start(modem.data_refusal(), Clock::now());
}

QmiAnswer stop(ModemState &modem, Payload)
{
    modem.connection.stop(Clock::now());
    return ret_ok;
}

// The card is always in, and ready at once.
QmiAnswer sim_status(ModemState &modem, Payload)
{
    switch (modem.sim_status()) {
    case SimStatus::pin:
        return SimIndex::pin;
    case SimStatus::puk:
        return SimIndex::puk;
    case SimStatus::network_locked:
        return SimIndex::network_personalization;
    case SimStatus::bad:
        return SimIndex::bad;
    case SimStatus::ready:
        break;
    }
    return SimIndex::ready;
}

QmiAnswer packet_service(ModemState &modem, Payload)
{
    return modem.attached() ? "attached" : "detached";
}

// Requests without arguments are served whatever else their payload holds.
const QmiRequest qmi_requests[] = {
    {1, "shared_CMIF_get_device_rev_id", device_revision},
    {3, "shared_CMIF_modify_profile_settings", modify_profile, describe_profile},
    {4, "shared_CMIF_start_network_interface", start},
    {5, "shared_CMIF_stop_network_interface", stop},
    {6, "shared_CMIF_get_sim_status", sim_status},
    {8, "shared_CMIF_get_ps_service", packet_service},
    {9, "shared_CMIF_set_CM_qfirehose", nullptr},
};

} // namespace

const QmiRequest *find_qmi_request(long code)
{
    for (const QmiRequest &request : qmi_requests)
        if (request.code == code)
            return &request;
    return nullptr;
}

} // namespace sim
