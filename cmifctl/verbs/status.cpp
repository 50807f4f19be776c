#include "daemon_state.h"
#include "qmi_readings.h"
#include "readings.h"
#include "store.h"
#include "verbs.h"

namespace cmifctl
{

void status(Context &context)
{
    const bool any =
        report_readings(context, {"modem", "sim", "network", "last_known", "radio", "data"});
    report_qmi_readings(context, {"device_revision", "state", "packet_service"});
    report_daemon(context.report, client::Channel::at, inspect_daemon(client::Channel::at));
    report_store(context.report, any);
}

} // namespace cmifctl
