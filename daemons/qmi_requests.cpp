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

consteval QmiForm form(cmif_qmi_code code)
{
    return *find_qmi_form(code);
}

// Requests without arguments are served whatever else their payload holds.
// clang-format off
const QmiRequest qmi_requests[] = {
    {form(CMIF_QMI_GET_DEVICE_REVISION), device_revision},
    {form(CMIF_QMI_MODIFY_PROFILE),      modify_profile, describe_profile},
    {form(CMIF_QMI_START),               start},
    {form(CMIF_QMI_STOP),                stop},
    {form(CMIF_QMI_GET_SIM_STATUS),      sim_status},
    {form(CMIF_QMI_GET_PACKET_SERVICE),  packet_service},
    {form(CMIF_QMI_DOWNLOAD_MODE),       nullptr},
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
