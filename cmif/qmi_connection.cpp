// QMI calls: the data connection. Start and stop are not symmetric; callers rely on both.
#include "qmi_channel.h"
#include "qmi_lines.h"
#include "store.h"

#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>

namespace cmif
{
namespace
{

enum State { disconnected = 1, connected = 3 };

bool _check_modify_profile_in_progress()
{
    struct stat marker;
    return stat(CMIF_PROFILE_BUSY_FILE, &marker) == 0;
}

bool state_is(State wanted)
{
    int state = 0;
    return shared_CMIF_get_connection_status(&state) == CMIF_OK && state == wanted;
}

void wait_a_second(const char *api, int left)
{
    qmi_print_and_log("[%s]: another connection status in progress... please wait %d sec ...\n",
                      api, left);
    sleep(1);
}

bool ready(const char *api)
{
    if (_check_msg_thread_ready() == 0)
        return true;
    qmi_print_and_log("[%s] msg thread not ready\n", api);
    return false;
}

int request(cmif_qmi_code code)
{
    QmiRecord record(code);
    return cmif_send_to_msgqueue(record, 5, code);
}

} // namespace
} // namespace cmif

using namespace cmif;

int shared_CMIF_get_connection_status(int *state)
{
    if (!state)
        return CMIF_INVALID;
    if (_check_modify_profile_in_progress())
        return CMIF_PROFILE_BUSY;

    const StoredText<4> stored("lte_qmi_connection_status");
    for (int number = 0; number <= connected; ++number) {
        const char digit[] = {static_cast<char>('0' + number), '\0'};
        if (!stored.is(digit))
            continue;
        *state = number;
        return CMIF_OK;
    }
    std::printf("%s connection status nvram out of range or undefined  \n",
                "shared_CMIF_get_connection_status");
    *state = 0;
    return CMIF_OK;
}

int shared_CMIF_start_network_interface(void)
{
    static constexpr char api[] = "shared_CMIF_start_network_interface";
    cmif_log_caller(api);
    if (state_is(connected)) {
        qmi_print_and_log("%s already connected!\n", api);
        return CMIF_OK;
    }
    if (StoredText<50>("lte_qmi_apn").is("")) {
        qmi_print_and_log("[%s] API has been denied since apn has not been set yet\n", api);
        return CMIF_INVALID;
    }
    // A negative sum waits for as long as the modification takes.
    const int before = std::atoi(tarnNvramConfig_get("lte_qmi_wait_time_before_restart"));
    const int after = std::atoi(tarnNvramConfig_get("lte_qmi_wait_time_after_restart"));
    for (auto left = static_cast<unsigned>(before) + static_cast<unsigned>(after);
         left != 0 && _check_modify_profile_in_progress(); --left)
        wait_a_second(api, static_cast<int>(left));

    if (!ready(api))
        return CMIF_NOT_READY;
    if (const int result = request(CMIF_QMI_START); result != CMIF_OK)
        return result;
    qmi_print_and_log("%s msgrcv succeeed!\n", api);
    return CMIF_OK;
}

int shared_CMIF_stop_network_interface(void)
{
    static constexpr char api[] = "shared_CMIF_stop_network_interface";
    cmif_log_caller(api);
    for (int left = 10; left != 0 && _check_modify_profile_in_progress(); --left)
        wait_a_second(api, left);
    if (state_is(disconnected)) {
        qmi_print_and_log("%s already disconnected!\n", api);
        return CMIF_OK;
    }
    if (!ready(api))
        return CMIF_NOT_READY;
    if (const int result = request(CMIF_QMI_STOP); result != CMIF_OK) {
        std::printf("%s msgrcv failed...\n", api);
        return result;
    }
    qmi_print_and_log("%s msgrcv succeeed!\n", api);
    return CMIF_OK;
}
