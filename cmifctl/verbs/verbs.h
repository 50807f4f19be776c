// The verbs, one function each, as the command table (cli/commands.cpp) names them.
#ifndef CMIFCTL_VERBS_VERBS_H
#define CMIFCTL_VERBS_VERBS_H

#include "cmifctl/context.h"

namespace cmifctl
{

// Asked before a request for firmware-download mode.
constexpr const char *download_warning = "This requests firmware-download mode: the modem stops "
                                         "working until it is reflashed or power-cycled";

void status(Context &context);
void summary(Context &context);
void doctor(Context &context);

void sim_status(Context &context);
void sim_retries(Context &context);
void sim_enter_pin(Context &context);
void sim_enter_puk(Context &context);
void sim_change_pin(Context &context);
void sim_pin_mode(Context &context);
void sim_lock_network(Context &context);
void sim_unlock_network(Context &context);

void radio_show(Context &context);
void radio_mode(Context &context);
void radio_band(Context &context);
void radio_roaming(Context &context);
void radio_domain(Context &context);
void radio_functionality(Context &context);
void radio_reset(Context &context);
void radio_timezone(Context &context);
void radio_download_mode(Context &context);

void network_show(Context &context);
void network_scan(Context &context);
void network_scan_state(Context &context);
void network_list(Context &context);
void network_select(Context &context);
void network_auto(Context &context);
void network_format(Context &context);

void sms_list(Context &context);
void sms_show(Context &context);
void sms_delete(Context &context);

void data_status(Context &context);
void data_start(Context &context);
void data_stop(Context &context);
void data_uptime(Context &context);
void data_auto_connect(Context &context);
void data_download_mode(Context &context);
void profile_show(Context &context);
void profile_set(Context &context);
void data_profile_sync(Context &context);
void data_at_profile(Context &context);
void data_ota_dm(Context &context);

void log_show(Context &context);
void log_follow(Context &context);
void log_mark(Context &context);
void log_rotate(Context &context);
void log_enable(Context &context);
void log_disable(Context &context);

void config_get(Context &context);
void config_set(Context &context);
void config_list(Context &context);
void config_save(Context &context);

} // namespace cmifctl

#endif
