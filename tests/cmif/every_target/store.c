/* The platform's store: values in memory, every access printed. */
#include "platform/tarn_nvram_config.h"

#include <stdio.h>
#include <string.h>

enum { longest = 128 };

struct row {
    char key[longest], value[longest];
};

static struct row rows[64] = {
    {"debug_at_cmif", "1"},
    {"debug_qmi_cmif", "1"},
    {"debug_lte_enable", "1"},
    {"lte_network_search_mode", "2"},
    {"lte_operator_select_network_mode", "0"},
    {"lte_roam_servive_config", "255"},
    {"lte_network_reg_status_state", "5"},
    {"lte_operator_select_ats_value", "100"},
    {"lte_pdp_type", "IPV4V6"},
    {"lte_query_network_mnc", "01"},
    {"lte_query_network_rssi", "-71"},
    {"lte_mobile_pin1c", "3"},
    {"lte_mobile_puk1c", "10"},
    {"lte_mobile_sms_counts", "1"},
    {"lte_mobile_sms_id_1", "17"},
    {"lte_mobile_sms_text_1", "100%% of 2%%"},
    {"lte_qmi_connection_status", "3"},
    {"lte_qmi_connection_uptime", "4000000"},
    {"lte_qmi_auto_connect_when_start_up", "on"},
    {"lte_qmi_auth", "2"},
};

/* The key's row, or the first free one. */
static struct row *row_of(const char *key)
{
    struct row *row = rows;
    while (row->key[0] != '\0' && strcmp(row->key, key) != 0)
        ++row;
    return row;
}

/* A key without a value reads as its own name, so that each getter shows which it reads. */
static const char *value_of(const char *key)
{
    const struct row *row = row_of(key);
    return row->key[0] == '\0' ? key : row->value;
}

const char *tarnNvramConfig_get(const char *key)
{
    static char answer[longest];
    printf("  get %s\n", key);
    snprintf(answer, sizeof answer, "%s", value_of(key));
    return answer;
}

int tarnNvramConfig_set(const char *key, const char *value)
{
    struct row *row = row_of(key);
    printf("  set %s=%s\n", key, value);
    snprintf(row->value, sizeof row->value, "%s", value);
    snprintf(row->key, sizeof row->key, "%s", key);
    return 0;
}

int tarnNvramConfig_match(const char *key, const char *text)
{
    printf("  match %s=%s\n", key, text);
    return strcmp(value_of(key), text) == 0;
}

int tarnNvramConfig_save(void)
{
    printf("  save\n");
    return 0;
}
