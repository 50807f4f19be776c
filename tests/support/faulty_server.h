// A simulated router that a test gives commands, and what comes out of its queues, byte for byte.
#ifndef TESTS_SUPPORT_FAULTY_SERVER_H
#define TESTS_SUPPORT_FAULTY_SERVER_H

#include "cmif-sim/control/protocol.h"
#include "qmi_server.h"

class FaultyServer : public QmiServer
{
protected:
    // Another router in place of the one that runs, with delays: 1 as a modem has them.
    void start_at_pace(double pace)
    {
        server.reset();
        cmif_sim::ServerOptions options = both();
        options.pace = pace;
        start(options);
    }
    cmif_sim::Answer give(const std::string &lines)
    {
        return cmif_sim::ask_box(server->process().process(), "run", lines);
    }
    // Of commands that are carried out.
    void command(const std::string &lines)
    {
        const cmif_sim::Answer answer = give(lines);
        ASSERT_EQ(answer.status, 0) << lines << ": " << answer.text;
    }
    std::string status() { return cmif_sim::ask_box(server->process().process(), "status").text; }

    // Waits until the status has this text, or has it no more.
    void await_status(const std::string &text, bool there = true)
    {
        const auto has_it = [&] { return status().find(text) != std::string::npos; };
        for (int tries = 5000; has_it() != there && tries > 0; --tries)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        EXPECT_EQ(has_it(), there) << text << "\n" << status();
    }

    static int at_requests() { return AtServer::requests(); }
    static int at_replies() { return AtServer::replies(); }
    static int qmi_replies() { return QmiServer::replies(); }

    static void send_at(long code, const Fields &fields = {})
    {
        AtServer::send(record_of(code, fields));
    }
    static int ask_at(long code, const Fields &fields = {})
    {
        send_at(code, fields);
        return AtServer::reply(code).value_or(-999);
    }

    // The payload of the next record of this code, of any size.
    static std::optional<std::string> payload(
        int queue, long code, std::chrono::milliseconds patience = std::chrono::seconds(10))
    {
        const auto end = std::chrono::steady_clock::now() + patience;
        do {
            struct {
                long type;
                char bytes[9000];
            } record{};
            const ssize_t size = msgrcv(queue, &record, sizeof record.bytes, code, IPC_NOWAIT);
            if (size >= 0)
                return std::string(record.bytes, static_cast<std::size_t>(size));
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        } while (std::chrono::steady_clock::now() < end);
        return std::nullopt;
    }
    // Nothing of this code comes for a while.
    static bool stays_silent(int queue, long code)
    {
        return !payload(queue, code, std::chrono::milliseconds(100));
    }
    static std::size_t waiting(int queue)
    {
        msqid_ds state{};
        EXPECT_EQ(msgctl(queue, IPC_STAT, &state), 0);
        return state.msg_qnum;
    }
    // The process that last took something off the queue.
    static pid_t reader(int queue)
    {
        msqid_ds state{};
        EXPECT_EQ(msgctl(queue, IPC_STAT, &state), 0);
        return state.msg_lrpid;
    }
};

#endif
