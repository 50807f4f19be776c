#include "qmi_readings.h"
#include "readings.h"
#include "verbs.h"

namespace cmifctl
{

void status(Invocation &run)
{
    report_summary(run);
    report_readings(run, {"modem", "sim", "network", "last_known", "radio", "data"});
    report_qmi_views(run, {"device_revision", "state", "packet_service"});
}

} // namespace cmifctl
