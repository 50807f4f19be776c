// What the verbs do, one function each; the command table (commands.cpp) names them.
#ifndef CMIFCTL_VERBS_VERBS_H
#define CMIFCTL_VERBS_VERBS_H

#include "cmifctl/context.h"

namespace cmifctl
{

void status(Invocation &run);

void sim_status(Invocation &run);
void sim_retries(Invocation &run);
void sim_enter_pin(Invocation &run);
void sim_enter_puk(Invocation &run);
void sim_change_pin(Invocation &run);
void sim_pin_mode(Invocation &run);
void sim_lock_network(Invocation &run);
void sim_unlock_network(Invocation &run);

void radio_show(Invocation &run);
void radio_mode(Invocation &run);
void radio_band(Invocation &run);
void radio_roaming(Invocation &run);
void radio_domain(Invocation &run);
void radio_functionality(Invocation &run);
void radio_reset(Invocation &run);
void radio_timezone(Invocation &run);
void radio_download_mode(Invocation &run);

void network_show(Invocation &run);
void network_scan(Invocation &run);
void network_scan_state(Invocation &run);
void network_list(Invocation &run);
void network_select(Invocation &run);
void network_auto(Invocation &run);
void network_format(Invocation &run);

void sms_list(Invocation &run);
void sms_show(Invocation &run);
void sms_delete(Invocation &run);

void data_status(Invocation &run);
void data_start(Invocation &run);
void data_stop(Invocation &run);
void data_uptime(Invocation &run);
void data_auto_connect(Invocation &run);
void data_download_mode(Invocation &run);
void profile_show(Invocation &run);
void profile_set(Invocation &run);
void data_profile_sync(Invocation &run);
void data_at_profile(Invocation &run);
void data_ota_dm(Invocation &run);

void log_show(Invocation &run);
void log_follow(Invocation &run);
void log_mark(Invocation &run);
void log_rotate(Invocation &run);
void log_enable(Invocation &run);
void log_disable(Invocation &run);

void config_get(Invocation &run);
void config_set(Invocation &run);
void config_list(Invocation &run);
void config_save(Invocation &run);

} // namespace cmifctl

#endif
