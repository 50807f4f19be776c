#include "daemon_readings.h"
#include "qmi_readings.h"
#include "readings.h"
#include "verbs.h"

namespace cmifctl
{

void status(Context &context)
{
    report_readings(context, {"modem", "sim", "network", "last_known", "radio", "data"});
    report_qmi_readings(context, {"device_revision", "state", "packet_service"});
    report_at_daemon(context);
    report_store(context);
}

} // namespace cmifctl
