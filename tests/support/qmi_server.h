// A simulated modem with its QMI daemon as well: records on its queues, profiles, a connection.
#ifndef TESTS_SUPPORT_QMI_SERVER_H
#define TESTS_SUPPORT_QMI_SERVER_H

#include "at_server.h"

#include <csignal>
#include <cstdint>
#include <string>

class QmiServer : public AtServer
{
protected:
    static cmif_sim::ServerOptions both()
    {
        cmif_sim::ServerOptions options = quick();
        options.qmi = true;
        return options;
    }
    void start(const cmif_sim::ServerOptions &options = both()) { AtServer::start(options); }
    void restart(const cmif_sim::ServerOptions &options = both())
    {
        ASSERT_EQ(server->end(SIGTERM), 0);
        start(options);
    }

    static int requests() { return msgget(CMIF_QMI_REQUEST_KEY, IPC_CREAT | 0666); }
    static int replies() { return msgget(CMIF_QMI_REPLY_KEY, IPC_CREAT | 0666); }

    static void send(long code, const std::string &payload)
    {
        Record request{code};
        std::memcpy(request.payload, payload.data(), payload.size());
        ASSERT_EQ(msgsnd(requests(), &request, payload.size(), 0), 0);
    }
    static std::optional<std::string> reply(
        long code, std::chrono::milliseconds patience = std::chrono::seconds(10))
    {
        const auto end = std::chrono::steady_clock::now() + patience;
        do {
            Record record{};
            const ssize_t size =
                msgrcv(replies(), &record, sizeof record.payload, code, IPC_NOWAIT);
            if (size >= 0)
                return std::string(record.payload, static_cast<std::size_t>(size));
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        } while (std::chrono::steady_clock::now() < end);
        return std::nullopt;
    }
    // The number at the start of the reply, or -999.
    static int ask_qmi(long code, const std::string &payload = std::string(5, '\0'))
    {
        send(code, payload);
        const std::string bytes = reply(code).value_or("");
        std::int32_t number = -999;
        if (bytes.size() >= sizeof number)
            std::memcpy(&number, bytes.data(), sizeof number);
        return number;
    }
    static std::string wire_profile(const std::string &apn, const std::string &user = "",
                                    const std::string &password = "",
                                    const std::string &numbers = "000")
    {
        std::string bytes(CMIF_QMI_PAYLOAD, '\0');
        bytes.replace(0, apn.size(), apn);
        bytes.replace(41, user.size(), user);
        bytes.replace(170, password.size(), password);
        for (std::size_t i = 0; i < 3; ++i)
            bytes[299 + 4 * i] = numbers[i];
        return bytes;
    }
    static void set_profile(const std::string &apn)
    {
        ASSERT_EQ(ask_qmi(3, wire_profile(apn)), answer::ok);
    }

    // Waits until it is registered, too.
    static void unlock_and_register()
    {
        unlock();
        ASSERT_TRUE(eventually_equals("lte_network_reg_status_state", "1"));
    }
    static void connect()
    {
        set_profile("internet.example");
        unlock_and_register();
        ASSERT_EQ(ask_qmi(4), answer::ok);
        ASSERT_TRUE(eventually_equals("lte_qmi_connection_status", "3"));
    }

private:
    // A payload of the given size, a profile at its start perhaps.
    struct Record {
        long type;
        char payload[4000] = {};
    };
};

#endif
