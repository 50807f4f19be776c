// Both daemons over a modem that is not the simulated one: what they ask of a modem is all that
// they know of it.
#include "daemons/at_daemon.h"
#include "daemons/qmi_daemon.h"
#include "tests/support/qmi_server.h"

#include <condition_variable>

namespace
{

using namespace daemons;
using namespace std::chrono_literals;

constexpr CmeError no = CmeError::not_supported;

// Knows its SIM, its firmware and the network around it, and nothing else. A search takes until it
// is told to end.
class OtherModem final : public Modem
{
public:
    void change(const std::function<void(ModemStatus &)> &action)
    {
        {
            const std::lock_guard lock(mutex_);
            action(status_);
            woken_.notify_all();
        }
        const std::lock_guard lock(watch_mutex_);
        if (changed_)
            changed_();
    }
    void end_search()
    {
        change([this](ModemStatus &) { search_over_ = true; });
    }
    ModemStatus status() const override
    {
        const std::lock_guard lock(mutex_);
        return status_;
    }
    void watch(std::function<void()> changed) override
    {
        const std::lock_guard lock(watch_mutex_);
        changed_ = std::move(changed);
    }
    void stop() override
    {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
        woken_.notify_all();
    }
    CmeError enter_pin(std::string_view pin) override
    {
        if (pin != "9876")
            return CmeError::incorrect_password;
        change([](ModemStatus &status) { status.sim = SimStatus::ready; });
        return CmeError::ok;
    }
    CmeError search(std::vector<Operator> &found) override
    {
        std::unique_lock lock(mutex_);
        woken_.wait(lock, [this] { return stopped_ || search_over_; });
        found = {{OperatorState::available, "Some (\"odd\") Network", "Odd", "99999", {}}};
        return search_over_ ? CmeError::ok : CmeError::no_connection_to_phone;
    }
    CmeError refresh(StatusPart) override { return CmeError::ok; }
    CmeError enter_puk(std::string_view, std::string_view) override { return no; }
    CmeError change_pin(std::string_view, std::string_view) override { return no; }
    CmeError set_pin_enabled(bool, std::string_view) override { return no; }
    CmeError lock_network(std::string_view, std::string_view) override { return no; }
    CmeError unlock_network(std::string_view) override { return no; }
    CmeError set_search_mode(SearchMode) override { return no; }
    CmeError select_operator(std::string_view, std::optional<Technology>) override { return no; }
    CmeError select_automatically() override { return no; }
    CmeError set_roaming(Roaming) override { return no; }
    CmeError set_packet_domain(bool) override { return no; }
    CmeError set_functionality(int) override { return no; }
    CmeError set_time_zone(int) override { return no; }
    CmeError factory_reset() override { return no; }
    CmeError list_messages() override { return no; }
    CmeError delete_messages(int, DeleteFlag) override { return no; }
    CmeError set_profile(int, const PdpProfile &) override { return no; }
    CmeError synchronize_profile() override { return no; }
    CmeError start_device_management() override { return no; }
    CmeError set_data_profile(const DataProfile &) override { return no; }
    CmeError connect() override { return no; }
    CmeError disconnect() override { return no; }
    CmeError connect_when_possible() override { return no; }

private:
    mutable std::mutex mutex_, watch_mutex_;
    std::condition_variable woken_;
    ModemStatus status_;
    std::function<void()> changed_;
    bool search_over_ = false, stopped_ = false;
};

class OtherModemTest : public QmiServer
{
protected:
    void SetUp() override
    {
        modem.change([](ModemStatus &status) {
            status.firmware = "OTHER 2.0";
            status.sim = SimStatus::pin_required;
        });
        publisher.emplace(modem);
        at.emplace(modem, *publisher, at_link, stop, false);
        qmi.emplace(modem, *publisher, qmi_link, stop, false);
        ASSERT_TRUE(at->start() && qmi->start());
    }
    void enter_pin() { EXPECT_EQ(ask(12, {"9876"}), answer::ok); }

    OtherModem modem;
    std::optional<Publisher> publisher;
    StopFlag stop;
    QueueLink at_link{CMIF_AT_REQUEST_KEY, CMIF_AT_REPLY_KEY};
    QueueLink qmi_link{CMIF_QMI_REQUEST_KEY, CMIF_QMI_REPLY_KEY};
    std::optional<AtDaemon> at;
    std::optional<QmiDaemon> qmi;
};

TEST_F(OtherModemTest, AnswersForItself)
{
    EXPECT_EQ(ask(12, {"1234"}), answer::incorrect_password);
    EXPECT_EQ(ask_qmi(6), 3);
    enter_pin();
    EXPECT_EQ(get("lte_sim_status"), "READY");
    EXPECT_EQ(ask_qmi(6), 2);
    send(1, "");
    EXPECT_EQ(reply(1).value_or("").substr(0, 10), std::string("OTHER 2.0\0", 10));
}

TEST_F(OtherModemTest, PublishesUnknownValuesAsEmpty)
{
    for (const char *key :
         {"lte_mobile_imei", "lte_sim_pin_mode", "lte_mobile_pin1c", "lte_network_reg_status_state",
          "lte_query_network_rssi", "lte_operator_select_ats_value", "lte_network_search_mode",
          "lte_pocket_domain_servive_status", "lte_pdp_type", "lte_qmi_connection_status",
          "lte_qmi_connection_uptime", "lte_query_network_info_access_technology_select"})
        EXPECT_EQ(get(key), "") << key;
    EXPECT_EQ(get("lte_module_sw_ver"), "OTHER 2.0");
    EXPECT_EQ(ask(8), answer::ok);
    EXPECT_EQ(get("lte_sim_pin_mode"), "");
}

TEST_F(OtherModemTest, PassesNotSupportedOn)
{
    const std::pair<long, Fields> requests[] = {
        {1, {}},
        {2, {"", "", "", "3"}},
        {3, {"", "", "", "0"}},
        {7, {"", "", "", "1"}},
        {9, {"0", "1234"}},
        {10, {"1", "00101", "11223344", "PN"}},
        {11, {"11223344"}},
        {13, {"1234", "4321"}},
        {14, {"12345678", "1234"}},
        {15, {"", "", "", "2"}},
        {17, {"00101", "7"}},
        {18, {}},
        {19, {"1", "0"}},
        {21, {}},
        {22, {"\1"}},
        {25, {"IP", "some.example", "", "3"}},
        {26, {}},
        {27, {}},
    };
    for (const auto &[code, fields] : requests)
        EXPECT_EQ(ask(code, fields), answer::not_supported) << code;
    EXPECT_EQ(ask_qmi(3, wire_profile("some.example")), answer::not_supported);
    EXPECT_EQ(ask_qmi(4), answer::not_supported);
    EXPECT_EQ(ask_qmi(5), answer::not_supported);
}

TEST_F(OtherModemTest, AChangeFromOutsideIsPublished)
{
    modem.change([](ModemStatus &status) {
        status.registration = Registration::roaming;
        status.technology = Technology::utran_hspa;
        status.cell.mcc = "999";
        status.cell.mnc = "99";
        status.signal.rssi = -71;
    });
    EXPECT_EQ(get("lte_network_reg_status_state"), "5");
    EXPECT_EQ(get("lte_operator_select_ats_value"), "6");
    EXPECT_EQ(get("lte_query_network_info_access_technology_select"), "UMTS");
    EXPECT_EQ(get("lte_operator_select_operator_plmnname"), "99999");
    EXPECT_EQ(get("lte_query_network_rssi"), "-71");
}

TEST_F(OtherModemTest, AnOlderSnapshotNeverOverwritesANewerOne)
{
    const auto use_attempts = [this] {
        for (int i = 0; i < 100; ++i)
            modem.change([](ModemStatus &status) {
                status.attempts.puk1 = status.attempts.puk1.value_or(0) + 1;
            });
    };
    std::thread one(use_attempts), other(use_attempts);
    for (int i = 0; i < 50; ++i)
        EXPECT_EQ(ask(4), answer::ok);
    one.join();
    other.join();
    EXPECT_EQ(get("lte_mobile_puk1c"), "200");
}

// A longer list is followed by a shorter one.
TEST_F(OtherModemTest, PublishesAsManyMessagesAsItHas)
{
    const auto list = [this](int count) {
        modem.change([count](ModemStatus &status) {
            status.messages.clear();
            for (int i = 1; i <= count; ++i)
                status.messages.push_back({i, true, "1", "now", "text"});
        });
    };
    list(40);
    EXPECT_EQ(get("lte_mobile_sms_counts"), "40");
    EXPECT_EQ(get("lte_mobile_sms_text_40"), "text");
    list(2);
    EXPECT_EQ(get("lte_mobile_sms_unreads"), "2");
    for (int i = 3; i <= 40; ++i)
        EXPECT_EQ(get("lte_mobile_sms_text_" + std::to_string(i)), "") << i;
}

TEST_F(OtherModemTest, ASearchNeverDelaysAPin)
{
    AtServer::send(record_of(24, {}));
    AtServer::send(record_of(17, {"00101", "7"})); // waits for the search
    AtServer::send(record_of(24, {}));             // joins it
    enter_pin();
    EXPECT_EQ(ask_qmi(6), 2);
    EXPECT_EQ(ask(23), answer::search_running);
    EXPECT_EQ(AtServer::reply(24, 10ms), std::nullopt);
    EXPECT_EQ(AtServer::reply(17, 10ms), std::nullopt);
    modem.end_search();
    EXPECT_EQ(AtServer::reply(24), answer::ok);
    EXPECT_EQ(AtServer::reply(24), answer::ok);
    EXPECT_EQ(AtServer::reply(17), answer::not_supported);
    EXPECT_EQ(ask(23), answer::ok);
    EXPECT_EQ(read(CMIF_PROVIDER_LIST_FILE), "+COPS: (1,\"Some odd Network\",\"Odd\",\"99999\")\n");
}

// The first one runs, some wait, and the rest is refused at once.
TEST_F(OtherModemTest, RefusesWhenTooManyRequestsWait)
{
    constexpr int refused = 5;
    AtServer::send(record_of(24, {}));
    std::this_thread::sleep_for(100ms); // until it runs
    for (int i = 0; i < static_cast<int>(Lane::max_waiting) + refused; ++i)
        AtServer::send(record_of(24, {}));
    for (int i = 0; i < refused; ++i)
        EXPECT_EQ(AtServer::reply(24), answer::not_allowed);
    EXPECT_EQ(AtServer::reply(24, 20ms), std::nullopt);
    enter_pin();
    modem.end_search();
    for (int i = 0; i < static_cast<int>(Lane::max_waiting) + 1; ++i)
        EXPECT_EQ(AtServer::reply(24), answer::ok) << i;
    EXPECT_EQ(ask(23), answer::ok);
}

TEST_F(OtherModemTest, AnEndCutsASearchShortAndLeavesItUnanswered)
{
    AtServer::send(record_of(24, {}));
    EXPECT_EQ(ask(23), answer::search_running);
    const auto before = std::chrono::steady_clock::now();
    qmi.reset();
    at.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - before, 1s);
    EXPECT_EQ(AtServer::reply(24, 1ms), std::nullopt);
}

} // namespace
