// The requests of the QMI channel by code and name.
#ifndef DAEMONS_QMI_FORMS_H
#define DAEMONS_QMI_FORMS_H

#include "cmif/cmif.h"

namespace daemons
{

struct QmiForm {
    cmif_qmi_code code;
    const char *name;
};

// clang-format off
inline constexpr QmiForm qmi_forms[] = {
    {CMIF_QMI_GET_DEVICE_REVISION, "shared_CMIF_get_device_rev_id"},
    {CMIF_QMI_MODIFY_PROFILE,      "shared_CMIF_modify_profile_settings"},
    {CMIF_QMI_START,               "shared_CMIF_start_network_interface"},
    {CMIF_QMI_STOP,                "shared_CMIF_stop_network_interface"},
    {CMIF_QMI_GET_SIM_STATUS,      "shared_CMIF_get_sim_status"},
    {CMIF_QMI_GET_PACKET_SERVICE,  "shared_CMIF_get_ps_service"},
    {CMIF_QMI_DOWNLOAD_MODE,       "shared_CMIF_set_CM_qfirehose"},
};
// clang-format on

// The form of a request code, or nullptr.
constexpr const QmiForm *find_qmi_form(long code)
{
    for (const QmiForm &form : qmi_forms)
        if (form.code == code)
            return &form;
    return nullptr;
}

} // namespace daemons

#endif
