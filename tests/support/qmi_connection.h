// Fixture for starting and stopping the connection, with the marker of a profile modification.
#ifndef TESTS_SUPPORT_QMI_CONNECTION_H
#define TESTS_SUPPORT_QMI_CONNECTION_H

#include "cmif/cmif.h"
#include "files.h"
#include "memory_store.h"
#include "qmi_call.h"

#include <gtest/gtest.h>

inline const std::string start = "shared_CMIF_start_network_interface";
inline const std::string stop = "shared_CMIF_stop_network_interface";
constexpr char state_key[] = "lte_qmi_connection_status";
constexpr char before_key[] = "lte_qmi_wait_time_before_restart";
constexpr char after_key[] = "lte_qmi_wait_time_after_restart";

class QmiConnection : public QmiTest
{
protected:
    QmiConnection() { store::set("lte_qmi_apn", "internet"); }

    static void set_busy() { write_file(profile_busy_path, "1\n"); }

    [[nodiscard]] Events started() const
    {
        return sequence({ready(), exchange(4, 5), said(start + " msgrcv succeeed!")});
    }

    [[nodiscard]] Events stopped() const
    {
        return sequence({ready(), exchange(5, 5), said(stop + " msgrcv succeeed!")});
    }

    void expect_start(const std::vector<Events> &events, int result = 0)
    {
        std::vector<Events> all{caller(start)};
        all.insert(all.end(), events.begin(), events.end());
        queues.reply(4, "");
        expect_call(shared_CMIF_start_network_interface, result, all);
        clear_queues();
    }

    void expect_stop(const std::vector<Events> &events, int result = 0)
    {
        std::vector<Events> all{caller(stop)};
        all.insert(all.end(), events.begin(), events.end());
        queues.reply(5, "");
        expect_call(shared_CMIF_stop_network_interface, result, all);
        clear_queues();
    }

private:
    void clear_queues() const
    {
        while (queues.take_request()) {}
        while (queues.take_reply()) {}
    }
};

#endif
