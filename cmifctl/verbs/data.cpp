#include "client/result.h"
#include "cmif/cmif.h"
#include "cmifctl/output/terminal.h"
#include "cmifctl/output/text.h"
#include "connection.h"
#include "qmi_readings.h"
#include "readings.h"
#include "verbs.h"

namespace cmifctl
{

void data_status(Invocation &run)
{
    if (connection_state(run) == profile_change)
        check_qmi("shared_CMIF_get_connection_status", CMIF_PROFILE_BUSY);
    report_readings(run, {"data"});
    report_qmi_views(run, {"packet_service"});
}

void data_start(Invocation &run)
{
    bring_to(run, Goal::connected);
    report_readings(run, {"data"});
}

void data_stop(Invocation &run)
{
    bring_to(run, Goal::disconnected);
    report_readings(run, {"data"});
}

void data_uptime(Invocation &run)
{
    const Json seconds =
        call(run.options, {.request = no_request("shared_CMIF_get_connection_uptime"),
                           .body =
                               [](Json &output) {
                                   unsigned int uptime = 0;
                                   const int result = shared_CMIF_get_connection_uptime(&uptime);
                                   output = uptime;
                                   return result;
                               }})
            .output;
    run.report.field("data", {"uptime", seconds, "s", duration(seconds.get<long long>())});
}

void data_auto_connect(Invocation &run)
{
    const bool change = run.arguments.has("state");
    const int wanted = change ? run.arguments.code("state", names::on_off) : 0;
    const Json enabled =
        call(run.options, {.request = no_request("shared_CMIF_set_auto_connect_when_start_up"),
                           .body =
                               [change, wanted](Json &output) {
                                   if (change)
                                       shared_CMIF_set_auto_connect_when_start_up(wanted);
                                   int state = 0;
                                   const int result =
                                       shared_CMIF_get_auto_connect_when_start_up(&state);
                                   output = state == 1;
                                   return result;
                               }})
            .output;
    if (change && enabled != (wanted == 1))
        throw Failure(Exit::other, "the store did not take the setting",
                      "Its own message says why.");
    run.report.field("data", {"auto_connect", enabled});
}

void data_download_mode(Invocation &run)
{
    confirm(run, "This asks the modem for its firmware-download mode: it is no phone until new "
                 "firmware is loaded or it is switched off");
    ask_qmi(run, {.request = qmi_request("shared_CMIF_set_CM_qfirehose", 9, 5),
                  .body = [](Json &) { return shared_CMIF_set_CM_qfirehose(); }});
    run.report.field("data", {"result", "the request is sent; no answer is awaited"});
}

void data_profile_sync(Invocation &run)
{
    ask_plain(run, "shared_CMIF_get_SyncProfile3", 27, shared_CMIF_get_SyncProfile3);
    run.report.field("data", {"result", "the stored profile is up to date with the modem's"});
}

void data_at_profile(Invocation &run)
{
    const int id = run.arguments.number("id", "NUMBER", 1, 16);
    const int type = run.arguments.code("type", names::pdp_type);
    const std::string type_name = enumeration(names::pdp_type, type)["name"];
    const std::string apn = run.arguments.text("apn");
    ask_at(run,
           {.request = at_request("shared_CMIF_set_Profile", 25,
                                  {.first = type_name, .second = apn, .value = std::to_string(id)}),
            .body = [&, id](Json &) {
                return shared_CMIF_set_Profile(id, type_name.c_str(), apn.c_str());
            }});
    run.report.field("profile", {"id", id});
    run.report.field("profile", {"type", enumeration(names::pdp_type, type)});
    run.report.field("profile", {"apn", apn});
}

void data_ota_dm(Invocation &run)
{
    ask_plain(run, "shared_CMIF_set_TriggerOTADMSession", 26, shared_CMIF_set_TriggerOTADMSession);
    run.report.field("data", {"result", "the device-management session is started"});
}

} // namespace cmifctl
