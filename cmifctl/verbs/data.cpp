#include "client/result.h"
#include "cmif/cmif.h"
#include "cmifctl/calls.h"
#include "cmifctl/input/questions.h"
#include "connection.h"
#include "qmi_readings.h"
#include "readings.h"
#include "store.h"
#include "verbs.h"

namespace cmifctl
{

void data_status(Context &context)
{
    if (connection_state(context) == profile_change)
        client::check_qmi("shared_CMIF_get_connection_status", CMIF_PROFILE_BUSY);
    report_readings(context, {"data"});
    report_qmi_readings(context, {"packet_service"});
}

void data_start(Context &context)
{
    if (context.arguments.has("no-wait")) {
        request(context, Target::connected);
        return context.report.result("accepted", "The daemon has accepted the request.");
    }
    drive_to(context, Target::connected);
    context.report.result("connected", "The connection is up.");
    report_readings(context, {"data"});
}

void data_stop(Context &context)
{
    drive_to(context, Target::disconnected);
    context.report.result("disconnected", "The connection is down.");
    report_readings(context, {"data"});
}

void data_uptime(Context &context)
{
    report_reading(context, "data", "uptime");
}

void data_auto_connect(Context &context)
{
    if (!context.arguments.has("state"))
        return report_reading(context, "data", "auto_connect");
    const int wanted = context.arguments.code("state", enums::on_off);
    const Json state = read(context, "shared_CMIF_set_auto_connect_when_start_up",
                            in_daemons_store([wanted](Json &output) {
                                shared_CMIF_set_auto_connect_when_start_up(wanted);
                                return reads(shared_CMIF_get_auto_connect_when_start_up)(output);
                            }));
    if (state != wanted)
        throw Failure(Exit::other, "the setting was not stored",
                      "The store has written the reason to standard error.");
    context.report.field("data", {"auto_connect", state == 1});
}

void data_download_mode(Context &context)
{
    confirm(context, download_warning);
    qmi_call(context,
             {.request = qmi_request("shared_CMIF_set_CM_qfirehose", CMIF_QMI_DOWNLOAD_MODE),
              .body = [](Json &) { return shared_CMIF_set_CM_qfirehose(); }});
    context.report.result("sent", "The request was sent; no reply is expected.");
}

void data_profile_sync(Context &context)
{
    at_command(context, "shared_CMIF_get_SyncProfile3", CMIF_AT_SYNCHRONIZE_PROFILE,
               shared_CMIF_get_SyncProfile3);
    context.report.result("synchronized", "The stored profile matches the modem's.");
}

void data_at_profile(Context &context)
{
    const int id = static_cast<int>(context.arguments.number("id", "NUMBER", 1, 16));
    const int type = context.arguments.code("type", enums::pdp_type);
    const std::string type_name = enums::pdp_type[type].word;
    const std::string apn = context.arguments.text("apn");
    check_length("apn", apn, sizeof cmif_msg::set_string2 - 1);
    at_call(context, {.request = at_request("shared_CMIF_set_Profile", CMIF_AT_SET_PROFILE),
                      .body = [&, id](Json &) {
                          return shared_CMIF_set_Profile(id, type_name.c_str(), apn.c_str());
                      }});
    context.report.field("requested", {"modem_profile.id", id});
    context.report.field("requested", coded("modem_profile.pdp_type", enums::pdp_type, type));
    context.report.field("requested", {"modem_profile.apn", apn});
}

void data_ota_dm(Context &context)
{
    at_command(context, "shared_CMIF_set_TriggerOTADMSession", CMIF_AT_START_DEVICE_MANAGEMENT,
               shared_CMIF_set_TriggerOTADMSession);
    context.report.result("started", "The device-management session was started.");
}

} // namespace cmifctl
