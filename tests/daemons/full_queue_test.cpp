// A reply queue that its callers don't empty: the daemons go on, without the replies that found no
// room. The log has the answer before the drop.
#include "tests/support/qmi_server.h"

namespace
{

using FullQueue = QmiServer;

// Replies that no caller waits for, as killed callers leave them.
template <class Record>
void fill(int queue, Record record, std::size_t payload)
{
    while (msgsnd(queue, &record, payload, IPC_NOWAIT) == 0) {}
}

void fill_at(int queue)
{
    cmif_msg record{};
    record.mod_id = 99;
    fill(queue, record, CMIF_AT_PAYLOAD);
}

bool contains(const std::string &text, const std::string &part)
{
    return text.find(part) != std::string::npos;
}

cmif_sim::ServerOptions verbose(cmif_sim::ServerOptions options)
{
    options.verbose = true;
    return options;
}

TEST_F(FullQueue, DoesNotStopTheAtDaemon)
{
    start(verbose(both()));
    fill_at(AtServer::replies());
    AtServer::send(record_of(4, {}));
    AtServer::send(record_of(12, {"1234"}));
    EXPECT_TRUE(eventually_equals("lte_sim_status", "READY"));
    msgctl(AtServer::replies(), IPC_RMID, nullptr);
    EXPECT_EQ(ask(4), answer::ok);
    EXPECT_TRUE(contains(server->errors(),
                         "AT <- 4 shared_CMIF_get_mobilePINPUKC ret_code=0 (ok)\n"
                         "full_queue_test: reply to request 4 dropped: message queue "
                         "900 is full\n"))
        << server->errors();
}

TEST_F(FullQueue, DoesNotStopTheQmiDaemon)
{
    start(verbose(both()));
    fill(replies(), qmi_msg{99, ""}, CMIF_QMI_PAYLOAD);
    send(6, "");
    send(3, wire_profile("own.example"));
    EXPECT_TRUE(eventually_equals("lte_qmi_apn", "own.example"));
    EXPECT_TRUE(contains(server->errors(),
                         "QMI <- 6 shared_CMIF_get_sim_status status=3\n"
                         "full_queue_test: reply to request 6 dropped: message queue "
                         "1159 is full\n"))
        << server->errors();
}

} // namespace
