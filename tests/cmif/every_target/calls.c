/* Calls of every family of the library from plain C, without a C++ library or a test library, so
 * that it runs wherever the library does: every_target.sh compares what it prints with
 * expected.txt. */
#include "daemon.h"

#include <stdio.h>
#include <string.h>

#define LENGTH(array) (sizeof(array) / sizeof(array)[0])
#define NAMED(call)                                                                                \
    {                                                                                              \
#call, call                                                                                \
    }

static const struct {
    const char *name;
    int (*call)(char *);
} texts[] = {
    NAMED(shared_CMIF_get_mobileHWVersion),
    NAMED(shared_CMIF_get_mobileFWVersion),
    NAMED(shared_CMIF_get_mobileIMEI),
    NAMED(shared_CMIF_get_mobileIMSI),
    NAMED(shared_CMIF_get_mobileSimICCID),
    NAMED(shared_CMIF_get_mobileSimStatus),
    NAMED(shared_CMIF_get_SubscriberNumber),
    NAMED(shared_CMIF_get_mobileNetworkMCC),
    NAMED(shared_CMIF_get_mobileLastKnownMCC),
    NAMED(shared_CMIF_get_mobileNetworkMNC),
    NAMED(shared_CMIF_get_mobileLastKnownMNC),
    NAMED(shared_CMIF_get_mobileNetworkLAC),
    NAMED(shared_CMIF_get_mobileLastKnownLAC),
    NAMED(shared_CMIF_get_mobileNetworkCellID),
    NAMED(shared_CMIF_get_mobileLastKnownCellID),
    NAMED(shared_CMIF_get_mobileRSSI),
    NAMED(shared_CMIF_get_mobile_3G_RSSI),
    NAMED(shared_CMIF_get_mobileRSRP),
    NAMED(shared_CMIF_get_mobileRSRQ),
    NAMED(shared_CMIF_get_mobileRSSINR),
    NAMED(shared_CMIF_get_mobileRadioBand),
    NAMED(shared_CMIF_get_mobileChannelNumber),
    NAMED(shared_CMIF_get_mobileACtiveNetwork),
    NAMED(shared_CMIF_get_mobileNetworkOperatorName),
    NAMED(shared_CMIF_GetOperatorLongName),
    NAMED(shared_CMIF_GetOperatorShortName),
    NAMED(shared_CMIF_GetOperatorPlmnName),
    NAMED(shared_CMIF_get_mobileIPv4_string),
    NAMED(shared_CMIF_get_mobileIPv6_string),
    NAMED(shared_CMIF_get_mobileNetworkAPN),
    NAMED(shared_CMIF_get_mobileLastKnownAPN),
    NAMED(shared_CMIF_get_mobile4gMode),
    NAMED(shared_CMIF_get_mobileNetworkMNCFormat),
    NAMED(shared_CMIF_get_mobileIPv4Address),
};

static const struct {
    const char *name;
    int (*call)(int *);
} numbers[] = {
    NAMED(shared_CMIF_get_mobileNetworkMode),
    NAMED(shared_CMIF_GetBandRegion),
    NAMED(shared_CMIF_GetNetworkMode),
    NAMED(shared_CMIF_get_mobileInternationalRoam),
    NAMED(shared_CMIF_get_mobileNetworkStatus),
    NAMED(shared_CMIF_get_OperatorSelectAct),
    NAMED(shared_CMIF_get_mobileNetworkPDPType),
    NAMED(shared_CMIF_get_connection_status),
    NAMED(shared_CMIF_get_auto_connect_when_start_up),
};

static void getters(void)
{
    size_t i;
    for (i = 0; i < LENGTH(texts); ++i) {
        char text[256] = "";
        int result;
        printf("%s\n", texts[i].name);
        result = texts[i].call(text);
        printf("  = %d '%s'\n", result, text);
    }
    for (i = 0; i < LENGTH(numbers); ++i) {
        int number = -7;
        int result;
        printf("%s\n", numbers[i].name);
        result = numbers[i].call(&number);
        printf("  = %d, %d\n", result, number);
    }
}

static void summary(void)
{
    struct {
        WirelessBroadbandInfo info;
        char room[64];
    } out;
    unsigned int uptime = 0;
    int result;
    memset(&out, 0, sizeof out);
    printf("shared_CMIF_GetWirelessBroadbandInfo\n");
    result = shared_CMIF_GetWirelessBroadbandInfo(&out.info);
    printf("  = %d, %d\n", result, out.info.NewRSSI);
    printf("shared_CMIF_get_connection_uptime\n");
    result = shared_CMIF_get_connection_uptime(&uptime);
    printf("  = %d, %u\n", result, uptime);
    printf("shared_CMIF_set_auto_connect_when_start_up\n");
    printf("  = %d\n", shared_CMIF_set_auto_connect_when_start_up(0));
}

static void provider_list(void)
{
    cmif_provider_info list[4];
    FILE *file = fopen(CMIF_PROVIDER_LIST_FILE, "w");
    int result;
    memset(list, 0, sizeof list);
    if (file) {
        fputs("(2,\"One Net\",\"One\",\"00101\",7),(3,\"Two\",\"T\",\"001017\",2),,(0-4),(0-2)",
              file);
        fclose(file);
    }
    printf("shared_CMIF_GetNetworkProviderList\n");
    result = shared_CMIF_GetNetworkProviderList(list);
    printf("  = %d, '%s' %d, '%s' %d\n", result, list[0].oper_long, list[0].act,
           list[1].oper_numeric, list[1].stat);
}

/* ANSWERED(channel, result, call): what the daemon receives of a call, and what its answer becomes.
 */
#define ANSWERED(channel, answer, call)                                                            \
    do {                                                                                           \
        const struct daemon daemon = start_daemon(&(channel), answer);                             \
        int returned;                                                                              \
        printf("%s\n", #call);                                                                     \
        returned = call;                                                                           \
        end_daemon(&daemon, &(channel));                                                           \
        printf("  = %d\n", returned);                                                              \
    } while (0)

static void at_requests(void)
{
    int counters[4] = {0, 0, 0, 0};
    int count = 0;
    int unreads = 0;
    cmif_sms_info message;
    memset(&message, 0, sizeof message);
    ANSWERED(at_channel, 0x01020304,
             shared_CMIF_set_NetworkPersonalizationLock("PN", "1", "00101", "12345678"));
    ANSWERED(at_channel, -5, shared_CMIF_set_mobileNetworkMode(3));
    ANSWERED(at_channel, 0, shared_CMIF_set_phone_functionality(0x0104));
    ANSWERED(at_channel, 0, shared_CMIF_get_mobilePINPUKC(counters));
    printf("  counters %d %d %d %d\n", counters[0], counters[1], counters[2], counters[3]);
    ANSWERED(at_channel, 0, shared_CMIF_get_mobileSMSInfo(&message, &count, &unreads));
    printf("  %d, %d unread: %d %d '%s' '%s' '%s'\n", count, unreads, message.id, message.stat,
           message.da, message.scts, message.text);
}

static void write_ready_marker(void)
{
    FILE *file = fopen(CMIF_QMI_READY_FILE, "w");
    if (file) {
        fputs("on", file);
        fclose(file);
    }
}

static void qmi_calls(void)
{
    const qmi_profile profile = {"internet", "user", "secret", 2, 3, 1};
    qmi_profile stored;
    int status = -7;
    int result;
    write_ready_marker();
    ANSWERED(qmi_channel, 0x01020304, shared_CMIF_get_sim_status(&status));
    printf("  status %d\n", status);
    ANSWERED(qmi_channel, 0, shared_CMIF_modify_profile_settings(profile, 0));
    printf("shared_CMIF_get_profile_settings\n");
    result = shared_CMIF_get_profile_settings(&stored);
    printf("  = %d, '%s' %d\n", result, stored.apn, stored.auth);
}

static void debug_log(void)
{
    char line[256];
    FILE *file = fopen(CMIF_LOG_FILE, "r");
    printf(CMIF_LOG_FILE "\n");
    while (file && fgets(line, sizeof line, file))
        printf("  %s", line);
    if (file)
        fclose(file);
}

int main(void)
{
    setvbuf(stdout, NULL, _IONBF, 0); /* a child would print what is pending as well */
    printf("init: %d\n", shared_debug_lte_mutex_init());
    getters();
    summary();
    provider_list();
    at_requests();
    qmi_calls();
    (void)shared_debug_lte_write_log_file("%0150d\n", 7); /* pending text is written first */
    printf("deinit: %d\n", shared_debug_lte_mutex_deinit());
    debug_log();
    return 0;
}
