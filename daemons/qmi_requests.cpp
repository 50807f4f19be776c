#include "qmi_requests.h"

#include "qmi_record.h"

namespace daemons
{
namespace
{

using Payload = std::string_view;

QmiAnswer modify_profile(Modem &modem, Payload payload)
{
    const std::optional<DataProfile> profile = decode_profile(payload);
    return profile ? modem.set_data_profile(*profile) : CmeError::incorrect_parameters;
}

QmiAnswer start(Modem &modem, Payload)
{
    return modem.connect();
}

QmiAnswer stop(Modem &modem, Payload)
{
    return modem.disconnect();
}

// The queries answer with what is known, even when the modem can't read it again: their answers
// have no room for an error.
QmiAnswer device_revision(Modem &modem, Payload)
{
    modem.refresh(StatusPart::revision);
    return modem.status().firmware;
}

QmiAnswer packet_service(Modem &modem, Payload)
{
    modem.refresh(StatusPart::packet_service);
    const std::optional<bool> attached = modem.status().packet_attached;
    return attached ? (*attached ? "attached" : "detached") : "";
}

QmiAnswer sim_status(Modem &modem, Payload)
{
    modem.refresh(StatusPart::sim);
    switch (modem.status().sim.value_or(SimStatus::not_ready)) {
    case SimStatus::absent:
        return QmiSimStatus::absent;
    case SimStatus::not_ready:
        return QmiSimStatus::not_ready;
    case SimStatus::pin_required:
        return QmiSimStatus::pin_required;
    case SimStatus::puk_required:
        return QmiSimStatus::puk_required;
    case SimStatus::network_locked:
        return QmiSimStatus::network_locked;
    case SimStatus::permanently_blocked:
        return QmiSimStatus::permanently_blocked;
    case SimStatus::ready:
        break;
    }
    return QmiSimStatus::ready;
}

// Requests without arguments are served whatever else their payload holds.
// clang-format off
const QmiRequest qmi_requests[] = {
    {CMIF_QMI_GET_DEVICE_REVISION, "shared_CMIF_get_device_rev_id",       device_revision},
    {CMIF_QMI_MODIFY_PROFILE,      "shared_CMIF_modify_profile_settings", modify_profile, describe_profile},
    {CMIF_QMI_START,               "shared_CMIF_start_network_interface", start},
    {CMIF_QMI_STOP,                "shared_CMIF_stop_network_interface",  stop},
    {CMIF_QMI_GET_SIM_STATUS,      "shared_CMIF_get_sim_status",          sim_status},
    {CMIF_QMI_GET_PACKET_SERVICE,  "shared_CMIF_get_ps_service",          packet_service},
    {CMIF_QMI_DOWNLOAD_MODE,       "shared_CMIF_set_CM_qfirehose",        nullptr},
};
// clang-format on

} // namespace

const QmiRequest *find_qmi_request(long code)
{
    for (const QmiRequest &request : qmi_requests)
        if (request.code == code)
            return &request;
    return nullptr;
}

} // namespace daemons
