/* The header in C: every record is complete, every constant usable, and the functions link. */
#include "header_test.h"

#include "cmif/cmif.h"

const unsigned sizes_in_c[record_count] = {
    sizeof(WirelessBroadbandInfo), sizeof(cmif_provider_info), sizeof(cmif_sms_info),
    sizeof(qmi_profile),           sizeof(struct cmif_msg),    sizeof(struct qmi_msg),
};

const int results_in_c[result_count] = {CMIF_NO_REPLY_QUEUE, CMIF_OK,          CMIF_NOT_READY,
                                        CMIF_NO_QUEUE,       CMIF_SEND_FAILED, CMIF_RECEIVE_FAILED,
                                        CMIF_INVALID,        CMIF_NO_FILE,     CMIF_PROFILE_BUSY};

int call_from_c(char *imei)
{
    int (*const getter)(char *) = shared_CMIF_get_mobileIMEI;
    int status = 0;
    if (getter(imei) != CMIF_OK || shared_CMIF_get_mobileNetworkStatus(&status) != CMIF_OK)
        return -1;
    return status;
}

/* By value and by format, as a C caller would. */
int call_with_a_profile(void)
{
    qmi_profile profile = {"internet", "", "", 0, 0, 0};
    (void)shared_debug_lte_write_log_file("%s %d\n", profile.apn, profile.auth);
    return shared_CMIF_modify_profile_settings(profile, 0);
}
